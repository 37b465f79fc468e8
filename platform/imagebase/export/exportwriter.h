#pragma once

#include "exportreport.h"
#include "exportstage.h"

#include <atomic>
#include <memory>
#include <optional>

/// Writes the files of an export into its stage and reads them back, both in the order of the list. One
/// thread.
class ExportWriter
{
public:
    /// @param stage outlives the writer
    static std::unique_ptr<ExportWriter> make(
        const ExportRequest &request, const ExportStage &stage, const std::atomic<bool> &cancelled);
    virtual ~ExportWriter() = default;

    struct Outcome
    {
        std::optional<ExportProblem> problem;
        QString detail;
        bool isFull = false; ///< the disk is
        bool isSpoilt = false; ///< nothing more can be written: to be begun anew without this file
    };
    virtual Outcome write(const ExportItem &item) = 0;
    /// After the last file. @return what went wrong, in the system's words; nothing for success
    virtual std::optional<Outcome> finish() = 0;
    /// Compares a file that was written with its source. After finish().
    virtual Outcome check(const ExportItem &item) = 0;
    /// After the last check. @return what is there besides the files that were checked; nothing for success
    virtual std::optional<Outcome> checkEnd() { return std::nullopt; }
    /// What gets its place as a whole, in this order, and is worthless with one bad file in it; empty where
    /// each file stands for itself.
    virtual QStringList pieces() const = 0;
};
