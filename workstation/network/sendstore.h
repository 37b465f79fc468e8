#pragma once

#include "sendjob.h"

#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

#include <mutex>

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

    bool isOpen() const { return m_isOpen; }
    /// Why it is not open, or why a statement failed, since canWrite() last said yes.
    const QString &problem() const { return m_problem; }
    /// Tries it.
    bool canWrite();

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

    /// A statement that stays prepared; it may name states and holds ("$waiting").
    QSqlQuery &prepared(const QString &sql);
    /// Runs it with its values; a failure becomes the problem.
    bool run(QSqlQuery &query);
    /// The same with these values, in the order of its places.
    bool run(QSqlQuery &query, const QVariantList &values);
    QSqlDatabase database() const;
    static std::mutex &writers();

private:
    bool open(const QString &path);

    const QString m_name;
    bool m_isOpen = false;
    QString m_problem;
    QHash<QString, QSqlQuery> m_prepared;
};
