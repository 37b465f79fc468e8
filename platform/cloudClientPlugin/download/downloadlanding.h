#pragma once

#include "askedseries.h"
#include "downloadrecorder.h"
#include "objectspool.h"
#include "queueownership.h"
#include "receivejournal.h"
#include "spoolindexer.h"

#include <QHash>
#include <QObject>

#include <memory>

/// What became of a fetched object.
struct LandedObject
{
    AskedSeries series; ///< that it was fetched for; empty where an earlier program did that
    bool isTaken = false; ///< the index has it
};

/**
 * Where fetched objects come down: a spool beside the index, and the way from there into the index. One
 * program at a time has that of an index, and takes over what others left there. On the thread of its parent.
 */
class DownloadLanding : public QObject
{
    Q_OBJECT

public:
    DownloadLanding(const QString &databasePath, DuplicatePolicy policy, QObject *parent);

    /// What happens from now on where other content comes under a known UID.
    void setPolicy(DuplicatePolicy policy);
    /// Whether other programs have left, or may have left something.
    bool hasLeftovers() const;
    /// @return false where it cannot be had now
    bool open();
    /// Whether it is open, and what others left is in the index: only then that says what is missing.
    bool isReady();
    const ObjectSpool &spool() const { return m_spool; }
    bool hasRoom() const { return m_spool.hasRoom(0); }

    /// A file of the open spool.
    void add(const AskedSeries &series, const QString &path);
    /// Objects of a series that have no verdict yet.
    qint64 pending(const AskedSeries &series) const;
    /// Whether something waits for the index.
    bool isBusy() const;
    /// To be called some times a second as long as something is pending.
    void look();

signals:
    void landed(const QVector<LandedObject> &objects);
    /// The objects that are still pending have gone from the spool: nothing more is heard of them.
    void lost();

private:
    void onCommitted(const QVector<SpooledObject> &objects);

    const QString m_databasePath;
    DuplicatePolicy m_policy;
    QueueOwnership m_ownership;
    ReceiveJournal m_journal;
    DownloadRecorder m_recorder;
    ObjectSpool m_spool;
    std::unique_ptr<SpoolIndexer> m_indexer; ///< ends before what it uses
    QHash<QByteArray, AskedSeries> m_owners; ///< of pending objects, by path
    bool m_isAdopting = false; ///< what earlier programs left is on its way into the index
    bool m_wasIdle = false; ///< at the last look, nothing waited for the index
};
