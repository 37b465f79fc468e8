#pragma once

#include "spoolfollower.h"

#include <QByteArray>
#include <QVector>

class QSqlDatabase;
class SpoolNotes;
struct SpoolItem;

/// What became of the objects of a batch, for whoever follows a spool. For the indexer's thread.
class SpoolVerdicts
{
public:
    /// @param follower null for nobody; it outlives this
    explicit SpoolVerdicts(SpoolFollower *follower)
        : m_follower(follower)
    { }

    /// Whether an object is none that was wanted: it is kept aside once the batch is committed.
    /// @param db of the batch's transaction
    bool isStranger(const QSqlDatabase &db, const SpoolItem &item);
    void note(const SpoolItem &item, bool isTaken);
    /// Before the commit. @return false where the batch must be undone
    bool record(const QSqlDatabase &db) const;
    /// After it: tells, and begins the next batch.
    void tell(const SpoolNotes &notes);
    /// The batch is undone.
    void forget();

private:
    SpoolFollower *const m_follower;
    QVector<SpooledObject> m_objects;
    QVector<QByteArray> m_strangers;
};
