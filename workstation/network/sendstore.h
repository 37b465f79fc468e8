#pragma once

#include "sendjob.h"

#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>

#include <mutex>

/// What a person wants of a job. Stored.
enum class SendHold : quint8 { None = 0, Paused = 1, Cancelled = 2 };

/**
 * The file of the jobs: a database of its own beside the index, since it is written for every object that is
 * sent and must not hold up the index. A connection for one thread; the writers of a process take turns.
 */
class SendStore
{
public:
    explicit SendStore(const QString &path);
    ~SendStore();
    SendStore(const SendStore &) = delete;
    SendStore &operator=(const SendStore &) = delete;

    bool isOpen() const { return m_problem.isEmpty(); }
    /// Why it is not open, or why the last statement failed.
    const QString &problem() const { return m_problem; }

    /// @name Jobs
    /// @{
    bool addJob(const SendJob &job, const QStringList &paths);
    QVector<SendJob> jobs();
    bool setHold(qint64 job, SendHold hold);
    QHash<qint64, SendHold> holds();
    /// Failed objects wait again, and a cancelled or paused job goes on.
    bool retryFailed(qint64 job);
    bool removeJob(qint64 job);
    /// Notes when jobs ended, and forgets those that ended before a time.
    bool endJobs(const QDateTime &now, const QDateTime &forgetBefore);
    /// What another process that is gone was sending waits again.
    bool recover();
    /// Changes when another connection has written.
    qint64 dataVersion();
    /// @}

    /// @name Paths that nobody has looked at
    /// @{
    /// The oldest job with such paths, that is not cancelled; 0 where there is none.
    qint64 unlistedJob();
    QStringList unlistedPaths(qint64 job);
    struct Listed
    {
        QVector<SendObject> objects;
        int paths = 0; ///< how many were looked at, from the first on
        int skippedFolders = 0;
        int skippedFiles = 0;
    };
    bool addListed(qint64 job, const Listed &listed);
    /// @}

    /// Part of a job's objects, in their order.
    QVector<SendObject> objects(qint64 job, int first, int count, bool onlyFailed);

    /// A statement that stays prepared; with no values bound.
    QSqlQuery &prepared(const QString &sql);
    /// Runs it with its values; a failure becomes the problem.
    bool run(QSqlQuery &query);
    QSqlDatabase database() const;
    /// The columns of an object, and the object that a row with them holds.
    static QString objectColumns();
    static SendObject objectOf(const QSqlQuery &row);

    static std::mutex &writers();

private:
    bool open(const QString &path);

    const QString m_name;
    QString m_problem;
    QHash<QString, QSqlQuery> m_prepared;
};
