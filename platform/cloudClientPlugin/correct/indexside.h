#pragma once

#include "correctionrequest.h"

#include <functional>

class IndexConnection;

/// The index's side of a correction: its records, and the files of its own store. What goes wrong is in the
/// report. Any thread with a stack of correctionStack bytes; each call has a connection of its own.
class IndexSide
{
public:
    IndexSide(const CorrectionRequest &request, CorrectionReport &report);

    /// UIDs of the studies that are to be corrected; none where the index cannot say. A patient's are those
    /// of now: an editor may have read them before another correction.
    QStringList studies();
    /// Done or Failed.
    void correct();
    /// @param goOn an answer of false ends it
    void correctFiles(
        const QStringList &studies, const std::function<bool(const CorrectionProgress &)> &goOn);

private:
    bool isOpen(const IndexConnection &connection);

    const CorrectionRequest &m_request;
    CorrectionReport &m_report;
};
