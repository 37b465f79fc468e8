#pragma once

#include "connectionfailure.h"
#include "imagebase_export.h"

#include <QSqlDatabase>
#include <QSqlError>

/**
 * A connection of a worker's own to an index file that exists: opened by the constructor, closed and removed
 * by the destructor, both on the thread that uses it. It never creates or upgrades.
 */
class IMAGEBASE_EXPORT IndexConnection
{
public:
    /// @param waitMs how long opening and later statements wait for a lock
    explicit IndexConnection(const QString &databasePath, int waitMs = lockWaitMs);
    ~IndexConnection();
    IndexConnection(const IndexConnection &) = delete;
    IndexConnection &operator=(const IndexConnection &) = delete;

    bool isOpen() const { return m_failure.reason == ConnectionFailure::Reason::None; }
    const ConnectionFailure &failure() const { return m_failure; }
    /// A handle for statements on this thread; do not keep it longer than this object.
    QSqlDatabase database() const;

    /// What every connection to the index gets, clones included: foreign keys, write-ahead log, fair waiting
    /// for a lock, the functions of searches. @return the database's error where it refuses
    static QSqlError configure(QSqlDatabase &db, int waitMs = lockWaitMs);

    /// Changes how long statements of a configured connection wait for a lock.
    static void setLockWait(const QSqlDatabase &db, int milliseconds);

    /// For a connection that goes through the same tables again and again, as the GUI's does at every search.
    static void keepTablesInMemory(const QSqlDatabase &db);

    /// Whoever writes what has no other copy: a commit that has returned survives a power cut.
    static void syncEveryCommit(const QSqlDatabase &db);
    /// As configured: a commit survives the end of the process, a power cut may take the latest ones back.
    static void syncSeldom(const QSqlDatabase &db);

    /// Whether a transaction is open on a connection, whoever began it.
    static bool isInTransaction(const QSqlDatabase &db);

    static constexpr int lockWaitMs = 10'000;

private:
    ConnectionFailure open(QSqlDatabase &db, int waitMs) const;

    QString m_name;
    ConnectionFailure m_failure;
};

/// A write transaction that takes the lock at its start and rolls back unless it was committed.
class IMAGEBASE_EXPORT WriteTransaction
{
public:
    explicit WriteTransaction(const QSqlDatabase &db);
    ~WriteTransaction();
    WriteTransaction(const WriteTransaction &) = delete;
    WriteTransaction &operator=(const WriteTransaction &) = delete;

    bool isActive() const { return m_active; }
    /// Why it is not active, or why commit() failed.
    const QSqlError &error() const { return m_error; }
    bool commit();
    void rollback();

private:
    QSqlDatabase m_db;
    QSqlError m_error;
    bool m_active = false;
};
