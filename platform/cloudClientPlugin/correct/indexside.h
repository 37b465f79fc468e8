#pragma once

#include "connectionfailure.h"
#include "correctionrequest.h"

#include <functional>

/// The index's side of a correction: its records, and the files of its own store. What goes wrong is in the
/// report. Any thread with a stack of correctionStack bytes; each call has a connection of its own, and waits
/// for a lock as long as any other would, but looks at the wish to stop meanwhile.
class IndexSide
{
public:
    /// @param isStopped the wish to end soon
    IndexSide(const CorrectionRequest &request, CorrectionReport &report, std::function<bool()> isStopped);

    /// UIDs of the studies that are to be corrected; none where the index cannot say. A patient's are those
    /// of now: an editor may have read them before another correction.
    QStringList studies();
    /// Done, Failed or Stopped.
    void correct();
    /// Whether the study's patient has the new values; false as well where the index cannot say.
    bool holdsNew();
    /// What an index that cannot be opened leaves undone counts as stopped.
    /// @param goOn an answer of false ends it
    void correctFiles(
        const QStringList &studies, const std::function<bool(const CorrectionProgress &)> &goOn);

private:
    ConnectionFailure tryIndex(const std::function<QSqlError(const QSqlDatabase &)> &work) const;
    void withIndex(const std::function<QSqlError(const QSqlDatabase &)> &work);
    IndexedPatient patient();

    const CorrectionRequest &m_request;
    CorrectionReport &m_report;
    const std::function<bool()> m_isStopped;
};
