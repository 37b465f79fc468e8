#pragma once

#include "fetchrate.h"
#include "uploadbatch.h"
#include "uploadlook.h"

#include <QSet>

#include <deque>

/**
 * An upload while it is being sent: its row of the index as last read, and the files that were taken from
 * there. What it holds, wherever it is (here, on its way, or waiting to be recorded), is not taken again.
 */
class UploadJob
{
public:
    UploadJob(qint64 id, QString service, int files);

    qint64 id() const { return m_id; }
    QString service() const { return m_service; }
    const UploadRow &row() const { return m_row; }
    void setRow(const UploadRow &row);
    bool isEntered() const { return m_isEntered; } ///< it stands in the index

    /// The next file to send, if any. @param mayBeSuspect whether one that had trouble may come before others
    bool takeNext(UploadStore &store, qint64 nowMs, bool mayBeSuspect, QueuedFile *next);
    void giveBack(const QueuedFile &file);
    /// When the first of those that wait here may be sent; 0 where that is now.
    qint64 dueMs() const;
    /// Those that had trouble wait no longer.
    void hurry();
    /// It does not wait in the index any more.
    void drop(const QueuedFile &file) { m_held.remove(file.file.id); }
    void setOnItsWay(int more) { m_onTheirWay += more; }
    /// The index has taken what became of it.
    void forget(const UploadOutcome &outcome, qint64 nowMs);
    /// What waits in the index is to be looked through from its beginning.
    void rewind() { m_cursor = 0; }

    /// There are files that were in no trouble yet.
    bool hasFresh() const { return !m_fresh.empty() || m_row.waiting() > m_held.size(); }
    /// Nothing waits, here or there.
    bool isOver() const { return m_isEntered && m_row.waiting() == 0 && m_held.isEmpty(); }

    /// Its numbers; the state is for the caller to say.
    UploadTally tally(qint64 nowMs) const;

    bool isCancelled = false;
    bool isRunTold = false; ///< that nothing waits any more
    bool isChanged = true; ///< since its tally was last told

private:
    void takeFresh(UploadStore &store);
    bool takeFrom(std::deque<QueuedFile> &queue, qint64 nowMs, QueuedFile *next);

    const qint64 m_id;
    const QString m_service;
    UploadRow m_row;
    bool m_isEntered = false;
    std::deque<QueuedFile> m_fresh;
    std::deque<QueuedFile> m_again; ///< that had trouble
    QSet<qint64> m_held;
    int m_onTheirWay = 0; ///< or waiting to be recorded
    qint64 m_cursor = 0; ///< behind the last file that was taken from the index
    FetchRate m_rate;
};
