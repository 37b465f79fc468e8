#pragma once

#include "importreport.h"
#include "receivejournal.h"

#include <QByteArray>

class ObjectSpool;

/// What the indexer of a spool tells the journal, and the objects that it keeps aside. For its thread.
class SpoolNotes
{
public:
    /// Both outlive it.
    SpoolNotes(ObjectSpool &spool, ReceiveJournal &journal)
        : m_spool(spool)
        , m_journal(journal)
    { }

    void countIndexed(std::size_t objects) const { m_journal.countIndexed(static_cast<qint64>(objects)); }
    /// The object is not indexed, and nobody tries again.
    void keepAside(const QByteArray &path, ReceiveProblem problem, const QString &detail) const;
    /// Keeps aside what a writer did not take, which still lies in the spool. @param first issues before it
    /// are dealt with
    void keepAside(const QVector<ImportIssue> &issues, int first) const;
    /// Objects cannot be written now, and wait.
    void tellWaiting(const QString &why, bool isFull) const;

private:
    ObjectSpool &m_spool;
    ReceiveJournal &m_journal;
};
