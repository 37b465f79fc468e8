#pragma once

#include "exportreport.h"
#include "imagebase_export.h"

#include <memory>

/**
 * Copies the files of records out of the index: into folders, into a ZIP archive, or as a DICOM file set.
 *
 * Everything grows in a hidden folder beside its place, is written out to the disk, read back and compared
 * with its source, and only then gets its name: whenever an export ends, by a kill, too, there is nothing
 * half under a final name. What exists is replaced only for folders named by keys and for the archive that
 * the user has named. run() blocks and is called once, on a thread of the caller's; it reads the index on a
 * connection of its own and changes nothing there.
 */
class IMAGEBASE_EXPORT Exporter
{
public:
    explicit Exporter(ExportRequest request);
    ~Exporter();
    Exporter(const Exporter &) = delete;
    Exporter &operator=(const Exporter &) = delete;

    ExportReport run();

    /// Any thread, any time: run() returns soon and leaves nothing.
    void cancel();
    /// Any thread, any time.
    ExportProgress progress() const;

    const ExportRequest &request() const;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
