#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

class QSqlDatabase;

/// An object of a spool, and what became of it.
struct SpooledObject
{
    QByteArray path; ///< where it was in the spool
    QString studyUid; ///< the UIDs are empty where it could not be read
    QString seriesUid;
    QString sopInstanceUid;
    bool isTaken = false; ///< the index has this content; else it was kept aside, or has gone
};

/**
 * Hears what becomes of the objects of a spool, and adds to the transactions that bring them in. Called on
 * the indexer's thread.
 */
class SpoolFollower
{
public:
    SpoolFollower() = default;
    virtual ~SpoolFollower() = default;
    SpoolFollower(const SpoolFollower &) = delete;
    SpoolFollower &operator=(const SpoolFollower &) = delete;

    /// Before it is written, on the connection of the transaction: whether an object is one that was wanted.
    /// Others are kept aside. Its isTaken says nothing yet
    virtual bool accepts(const QSqlDatabase & /*db*/, const SpooledObject & /*object*/) { return true; }
    /// Before the commit, on its connection: what is written here counts with the records, or not at all.
    /// @return false where that failed; the batch is undone and tried again
    virtual bool record(const QSqlDatabase &db, const QVector<SpooledObject> &objects) = 0;
    /// They are committed.
    virtual void committed(const QVector<SpooledObject> &objects) = 0;
};
