#pragma once

#include "imagebase_export.h"
#include "importreport.h"
#include "importrequest.h"

#include <memory>

/// Where an import stands; a copy, taken at any moment.
struct ImportProgress
{
    qint64 found = 0; ///< files met so far; final once walking is false
    qint64 done = 0; ///< files of these that have their verdict and are committed
    bool walking = true; ///< folders are still being listed
    bool finished = false;
    QString current; ///< the file read last
};

/**
 * Imports files and folders into the index: a walk, readers on all cores, one writer.
 *
 * run() blocks and is called once, on the thread that shall write; it opens and closes its own connection
 * there and starts and joins its own reader threads. Files are taken in the order of the walk, so that the
 * same folder always gives the same index. Records are committed in batches, each only when its file is in
 * place.
 */
class IMAGEBASE_EXPORT Importer
{
public:
    explicit Importer(ImportRequest request);
    ~Importer();
    Importer(const Importer &) = delete;
    Importer &operator=(const Importer &) = delete;

    /// Works through the request; what is done when it returns is committed.
    ImportReport run();

    /// Any thread, any time: run() returns within a second with what it has.
    void cancel();
    /// Any thread, any time.
    ImportProgress progress() const;

    /// Whether an import of this process is in its run(). Any thread, any time.
    static bool isAnyRunning();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
