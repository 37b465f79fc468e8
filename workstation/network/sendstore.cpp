#include "sendstore.h"

#include "indexconnection.h"
#include "sendpaths.h"
#include "sendschema.h"

#include <QSqlError>
#include <QUuid>
#include <QVariant>

namespace {

constexpr QLatin1Char labelSeparator('\n');

QString notNull(const QString &text)
{
    return text.isNull() ? QLatin1String("") : text;
}

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
    job.label = {row.value(16).toString(), row.value(17).toString().split(labelSeparator, Qt::SkipEmptyParts),
        row.value(18).toInt()};
    job.state = stateOf(SendHold(row.value(5).toInt()), job, row.value(15).toBool());
    return job;
}

} // namespace

SendStore::SendStore(const QString &path)
    : m_name(QUuid::createUuid().toString())
{
    const std::lock_guard lock(writers());
    m_isOpen = open(path);
    if (!m_isOpen && m_problem.isEmpty()) {
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
        found->prepare(withSendNumbers(sql));
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

bool SendStore::run(QSqlQuery &query, const QVariantList &values)
{
    for (int at = 0; at < values.size(); ++at) {
        query.bindValue(at, values[at]);
    }
    return run(query);
}

bool SendStore::canWrite()
{
    const std::lock_guard lock(writers());
    WriteTransaction transaction(database());
    const bool good = transaction.isActive() && touchSendSchema(database()) && transaction.commit();
    m_problem = good ? QString() : m_problem;
    return good;
}

bool SendStore::addJob(const SendJob &job, const QStringList &paths)
{
    const std::lock_guard lock(writers());
    WriteTransaction transaction(database());
    QSqlQuery &query = prepared(QStringLiteral(
        "INSERT OR IGNORE INTO job(id, ae_title, host, port, source, created, unlisted, skipped_files, "
        "destination, patients, patient_count) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    const QVariantList values{job.id, notNull(job.node.aeTitle), notNull(job.node.host), job.node.port,
        int(job.source), job.created.toMSecsSinceEpoch(), paths.size(), job.skippedFiles,
        notNull(job.label.destination), notNull(job.label.patients.join(labelSeparator)),
        job.label.patientCount};
    QSqlQuery &list = prepared(QStringLiteral("INSERT OR IGNORE INTO paths(job, list) VALUES(?, ?)"));
    return transaction.isActive() && run(query, values)
        && (paths.isEmpty() || run(list, {job.id, SendPaths::toBytes(paths)})) && transaction.commit();
}

QVector<SendJob> SendStore::jobs()
{
    QVector<SendJob> found;
    QSqlQuery &query = prepared(QStringLiteral(
        "SELECT id, ae_title, host, port, source, hold, created, ended, unlisted, total, accepted, warned, "
        "failed, skipped_folders, skipped_files, "
        "ended IS NULL AND EXISTS(SELECT 1 FROM object WHERE job = job.id AND state = $sending), "
        "destination, patients, patient_count FROM job ORDER BY id"));
    for (bool more = run(query) && query.next(); more; more = query.next()) {
        found.append(jobOf(query));
    }
    query.finish();
    return found;
}

bool SendStore::setHold(qint64 job, SendHold hold)
{
    const std::lock_guard lock(writers());
    QSqlQuery &query = prepared(QStringLiteral(
        "UPDATE job SET hold = ?, ended = ? WHERE id = ? AND (ended IS NULL OR hold = $cancelled)"));
    query.bindValue(0, int(hold));
    query.bindValue(1, hold == SendHold::Cancelled ? QDateTime::currentMSecsSinceEpoch() : QVariant());
    query.bindValue(2, job);
    return run(query);
}

QHash<qint64, SendHold> SendStore::holds()
{
    QHash<qint64, SendHold> found;
    QSqlQuery &query = prepared(QStringLiteral("SELECT id, hold FROM job WHERE hold <> $free"));
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
    QSqlQuery &objects = prepared(QStringLiteral("UPDATE object SET state = $waiting, attempts = 0, "
                                                 "not_before = 0 WHERE job = ? AND state = $failed"));
    objects.bindValue(0, job);
    QSqlQuery &waiting =
        prepared(QStringLiteral("UPDATE object SET not_before = 0 WHERE job = ? AND state = $waiting"));
    waiting.bindValue(0, job);
    QSqlQuery &jobs = prepared(QStringLiteral("UPDATE job SET hold = $free, ended = NULL WHERE id = ?"));
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
        prepared(QStringLiteral("UPDATE job SET ended = ?, hold = $free "
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
        prepared(QStringLiteral("UPDATE object SET state = $waiting WHERE state = $sending "
                                "AND job IN (SELECT id FROM job WHERE ended IS NULL OR hold = $cancelled)"));
    return run(query);
}

qint64 SendStore::dataVersion()
{
    QSqlQuery query(database());
    return query.exec(QStringLiteral("PRAGMA data_version")) && query.next() ? query.value(0).toLongLong()
                                                                             : 0;
}
