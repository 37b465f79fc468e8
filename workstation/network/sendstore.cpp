#include "sendstore.h"

#include "indexconnection.h"
#include "sendschema.h"

#include <QSqlError>
#include <QUuid>
#include <QVariant>

namespace {

constexpr char pathSeparator = '\0';

QDateTime timeOf(const QVariant &value)
{
    return value.isNull() ? QDateTime() : QDateTime::fromMSecsSinceEpoch(value.toLongLong());
}

SendJobState stateOf(SendHold hold, const SendJob &job, bool isSending)
{
    if (hold == SendHold::Cancelled) {
        return SendJobState::Cancelled;
    }
    if (job.ended.isValid()) {
        return SendJobState::Ended;
    }
    if (hold == SendHold::Paused) {
        return SendJobState::Paused;
    }
    return isSending ? SendJobState::Sending : SendJobState::Waiting;
}

SendJob jobOf(const QSqlQuery &row)
{
    SendJob job;
    job.id = row.value(0).toLongLong();
    job.node = {row.value(1).toString(), row.value(2).toString(), row.value(3).toInt()};
    job.source = SendSource(row.value(4).toInt());
    job.created = timeOf(row.value(6));
    job.ended = timeOf(row.value(7));
    job.unlisted = row.value(8).toLongLong();
    job.total = row.value(9).toLongLong();
    job.accepted = row.value(10).toLongLong();
    job.warned = row.value(11).toLongLong();
    job.failed = row.value(12).toLongLong();
    job.skippedFolders = row.value(13).toLongLong();
    job.skippedFiles = row.value(14).toLongLong();
    job.state = stateOf(SendHold(row.value(5).toInt()), job, row.value(15).toBool());
    return job;
}

} // namespace

SendStore::SendStore(const QString &path)
    : m_name(QUuid::createUuid().toString())
{
    const std::lock_guard lock(writers());
    if (!open(path) && m_problem.isEmpty()) {
        const QString words = database().lastError().text();
        m_problem = words.isEmpty() ? path : words;
    }
}

SendStore::~SendStore()
{
    m_prepared.clear();
    database().close();
    QSqlDatabase::removeDatabase(m_name);
}

bool SendStore::open(const QString &path)
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
    db.setDatabaseName(path);
    if (!db.open()) {
        return false;
    }
    const QSqlError error = IndexConnection::configure(db);
    if (error.isValid()) {
        m_problem = error.text();
        return false;
    }
    return prepareSendSchema(db);
}

QSqlDatabase SendStore::database() const
{
    return QSqlDatabase::database(m_name, false);
}

std::mutex &SendStore::writers()
{
    static std::mutex mutex;
    return mutex;
}

QSqlQuery &SendStore::prepared(const QString &sql)
{
    auto found = m_prepared.find(sql);
    if (found == m_prepared.end()) {
        found = m_prepared.insert(sql, QSqlQuery(database()));
        found->setForwardOnly(true);
        found->prepare(sql);
    }
    return *found;
}

bool SendStore::run(QSqlQuery &query)
{
    const bool good = query.exec();
    if (!good) {
        m_problem = query.lastError().text();
    }
    return good;
}

bool SendStore::addJob(const SendJob &job, const QStringList &paths)
{
    const std::lock_guard lock(writers());
    QSqlQuery &query =
        prepared(QStringLiteral("INSERT INTO job(id, ae_title, host, port, source, created, paths, unlisted) "
                                "VALUES(?, ?, ?, ?, ?, ?, ?, ?)"));
    const QVariantList values{job.id, job.node.aeTitle, job.node.host, job.node.port, int(job.source),
        job.created.toMSecsSinceEpoch(), paths.join(QLatin1Char(pathSeparator)).toUtf8(), paths.size()};
    for (int at = 0; at < values.size(); ++at) {
        query.bindValue(at, values[at]);
    }
    return run(query);
}

QVector<SendJob> SendStore::jobs()
{
    QVector<SendJob> found;
    QSqlQuery &query = prepared(QStringLiteral(
        "SELECT id, ae_title, host, port, source, hold, created, ended, unlisted, total, accepted, warned, "
        "failed, skipped_folders, skipped_files, "
        "ended IS NULL AND EXISTS(SELECT 1 FROM object WHERE job = job.id AND state = 1) "
        "FROM job ORDER BY id"));
    for (bool more = run(query) && query.next(); more; more = query.next()) {
        found.append(jobOf(query));
    }
    query.finish();
    return found;
}

bool SendStore::setHold(qint64 job, SendHold hold)
{
    const std::lock_guard lock(writers());
    QSqlQuery &query = prepared(
        QStringLiteral("UPDATE job SET hold = ?, ended = ? WHERE id = ? AND (ended IS NULL OR hold = 2)"));
    query.bindValue(0, int(hold));
    query.bindValue(1, hold == SendHold::Cancelled ? QDateTime::currentMSecsSinceEpoch() : QVariant());
    query.bindValue(2, job);
    return run(query);
}

QHash<qint64, SendHold> SendStore::holds()
{
    QHash<qint64, SendHold> found;
    QSqlQuery &query = prepared(QStringLiteral("SELECT id, hold FROM job WHERE hold <> 0"));
    for (bool more = run(query) && query.next(); more; more = query.next()) {
        found.insert(query.value(0).toLongLong(), SendHold(query.value(1).toInt()));
    }
    query.finish();
    return found;
}

bool SendStore::retryFailed(qint64 job)
{
    const std::lock_guard lock(writers());
    WriteTransaction transaction(database());
    QSqlQuery &objects = prepared(QStringLiteral(
        "UPDATE object SET state = 0, attempts = 0, not_before = 0 WHERE job = ? AND state = 3"));
    objects.bindValue(0, job);
    QSqlQuery &waiting =
        prepared(QStringLiteral("UPDATE object SET not_before = 0 WHERE job = ? AND state = 0"));
    waiting.bindValue(0, job);
    QSqlQuery &jobs = prepared(QStringLiteral("UPDATE job SET hold = 0, ended = NULL WHERE id = ?"));
    jobs.bindValue(0, job);
    return transaction.isActive() && run(objects) && run(waiting) && run(jobs) && transaction.commit();
}

bool SendStore::removeJob(qint64 job)
{
    const std::lock_guard lock(writers());
    QSqlQuery &query = prepared(QStringLiteral("DELETE FROM job WHERE id = ? AND ended IS NOT NULL"));
    query.bindValue(0, job);
    return run(query);
}

bool SendStore::endJobs(const QDateTime &now, const QDateTime &forgetBefore)
{
    const std::lock_guard lock(writers());
    QSqlQuery &ended =
        prepared(QStringLiteral("UPDATE job SET ended = ?, hold = 0 "
                                "WHERE ended IS NULL AND unlisted = 0 AND accepted + failed = total"));
    ended.bindValue(0, now.toMSecsSinceEpoch());
    QSqlQuery &old = prepared(QStringLiteral("DELETE FROM job WHERE ended < ?"));
    old.bindValue(0, forgetBefore.toMSecsSinceEpoch());
    return run(ended) && run(old);
}

bool SendStore::recover()
{
    const std::lock_guard lock(writers());
    QSqlQuery &query =
        prepared(QStringLiteral("UPDATE object SET state = 0 WHERE state = 1 "
                                "AND job IN (SELECT id FROM job WHERE ended IS NULL OR hold = 2)"));
    return run(query);
}

qint64 SendStore::dataVersion()
{
    QSqlQuery query(database());
    return query.exec(QStringLiteral("PRAGMA data_version")) && query.next() ? query.value(0).toLongLong()
                                                                             : 0;
}

qint64 SendStore::unlistedJob()
{
    QSqlQuery &query =
        prepared(QStringLiteral("SELECT id FROM job WHERE unlisted > 0 AND hold <> 2 ORDER BY id LIMIT 1"));
    const qint64 job = run(query) && query.next() ? query.value(0).toLongLong() : 0;
    query.finish();
    return job;
}

QStringList SendStore::unlistedPaths(qint64 job)
{
    QSqlQuery &query = prepared(QStringLiteral("SELECT paths, unlisted FROM job WHERE id = ?"));
    query.bindValue(0, job);
    QStringList paths;
    if (run(query) && query.next() && !query.isNull(0)) {
        const QByteArray bytes = query.value(0).toByteArray(); // fromUtf8() of an array ends at a zero
        const QStringList all =
            QString::fromUtf8(bytes.constData(), bytes.size()).split(QLatin1Char(pathSeparator));
        paths = all.mid(all.size() - query.value(1).toInt());
    }
    query.finish();
    return paths;
}

bool SendStore::addListed(qint64 job, const Listed &listed)
{
    const std::lock_guard lock(writers());
    WriteTransaction transaction(database());
    QSqlQuery &insert = prepared(QStringLiteral(
        "INSERT INTO object(job, path, sop_class, sop_instance, transfer_syntax, state, problem, detail) "
        "VALUES(?, ?, ?, ?, ?, ?, ?, ?)"));
    for (const SendObject &object : listed.objects) {
        const QVariantList values{job, object.path, object.sopClassUid, object.sopInstanceUid,
            object.transferSyntaxUid, int(object.state), int(object.outcome.problem), object.outcome.detail};
        for (int at = 0; at < values.size(); ++at) {
            insert.bindValue(at, values[at]);
        }
        if (!run(insert)) {
            return false;
        }
    }
    QSqlQuery &update = prepared(
        QStringLiteral("UPDATE job SET unlisted = unlisted - ?, skipped_folders = skipped_folders + ?, "
                       "skipped_files = skipped_files + ? WHERE id = ?"));
    update.bindValue(0, listed.paths);
    update.bindValue(1, listed.skippedFolders);
    update.bindValue(2, listed.skippedFiles);
    update.bindValue(3, job);
    QSqlQuery &done = prepared(QStringLiteral("UPDATE job SET paths = NULL WHERE id = ? AND unlisted = 0"));
    done.bindValue(0, job);
    return transaction.isActive() && run(update) && run(done) && transaction.commit();
}

QString SendStore::objectColumns()
{
    return QStringLiteral("object.id, object.job, path, sop_class, sop_instance, transfer_syntax, "
                          "object.state, problem, status, network, detail, attempts, changed");
}

SendObject SendStore::objectOf(const QSqlQuery &row)
{
    SendObject object;
    object.id = row.value(0).toLongLong();
    object.job = row.value(1).toLongLong();
    object.path = row.value(2).toString();
    object.sopClassUid = row.value(3).toString();
    object.sopInstanceUid = row.value(4).toString();
    object.transferSyntaxUid = row.value(5).toString();
    object.state = SendObjectState(row.value(6).toInt());
    object.outcome.problem = StoreProblem(row.value(7).toInt());
    object.outcome.status = static_cast<quint16>(row.value(8).toInt());
    object.outcome.network.problem = NetworkProblem(row.value(9).toInt());
    object.outcome.detail = row.value(10).toString();
    object.outcome.network.detail = object.outcome.detail;
    object.attempts = row.value(11).toInt();
    object.changed = timeOf(row.value(12));
    return object;
}

QVector<SendObject> SendStore::objects(qint64 job, int first, int count, bool onlyFailed)
{
    const QString failedOnly = onlyFailed ? QStringLiteral(" AND state = 3") : QString();
    QSqlQuery &query =
        prepared(QStringLiteral("SELECT %1 FROM object WHERE job = ?%2 ORDER BY id LIMIT ? OFFSET ?")
                     .arg(objectColumns(), failedOnly));
    query.bindValue(0, job);
    query.bindValue(1, count);
    query.bindValue(2, first);
    QVector<SendObject> found;
    for (bool more = run(query) && query.next(); more; more = query.next()) {
        found.append(objectOf(query));
    }
    query.finish();
    return found;
}
