#pragma once

#include "deidentifyreport.h"
#include "imagebase_export.h"

#include <memory>

/**
 * Makes anonymous copies of many files, on a thread for each core. They grow in a hidden folder and come to
 * their place together, by deliver(); without it nothing is left of the run, whenever it ends.
 *
 * run() and then deliver() are called once each, on any thread and not at once.
 */
class IMAGEBASE_EXPORT DeidentifyRun
{
public:
    explicit DeidentifyRun(DeidentifyRequest request);
    ~DeidentifyRun();
    DeidentifyRun(const DeidentifyRun &) = delete;
    DeidentifyRun &operator=(const DeidentifyRun &) = delete;

    const DeidentifyRequest &request() const;
    /// Makes the copies; returns soon after a cancel().
    DeidentifyReport run();
    /// Brings them to their place.
    /// @param withBurnedIn also those in whose pictures names may be seen
    DeidentifyReport deliver(bool withBurnedIn);

    /// Any thread. Also ends a deliver() that has not brought them there yet.
    void cancel();
    /// How many files have been looked at. Any thread.
    int done() const;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
