#include "sendpaths.h"

#include "indexconnection.h"

#include <QVariant>

namespace {

constexpr char separator = '\0';

} // namespace

QByteArray SendPaths::toBytes(const QStringList &paths)
{
    return paths.join(QLatin1Char(separator)).toUtf8();
}

qint64 SendPaths::job()
{
    QSqlQuery &query = m_store.prepared(
        QStringLiteral("SELECT id FROM job WHERE unlisted > 0 AND hold <> $cancelled ORDER BY id LIMIT 1"));
    const qint64 job = m_store.run(query) && query.next() ? query.value(0).toLongLong() : 0;
    query.finish();
    return job;
}

bool SendPaths::read(qint64 job, QStringList &paths)
{
    QSqlQuery &query = m_store.prepared(
        QStringLiteral("SELECT list, unlisted FROM paths JOIN job ON job.id = paths.job WHERE job = ?"));
    query.bindValue(0, job);
    const bool good = m_store.run(query);
    paths.clear();
    if (good && query.next() && !query.isNull(0)) {
        const QByteArray bytes = query.value(0).toByteArray(); // fromUtf8() of an array ends at a zero
        const QStringList all =
            QString::fromUtf8(bytes.constData(), bytes.size()).split(QLatin1Char(separator));
        paths = all.mid(std::max(0, all.size() - query.value(1).toInt()));
    }
    query.finish();
    return good;
}

bool SendPaths::add(qint64 job, const Listed &listed)
{
    const std::lock_guard lock(SendStore::writers());
    WriteTransaction transaction(m_store.database());
    if (!transaction.isActive()) {
        return false;
    }
    QSqlQuery &insert = m_store.prepared(QStringLiteral(
        "INSERT INTO object(job, path, sop_class, sop_instance, transfer_syntax, state, problem, detail) "
        "VALUES(?, ?, ?, ?, ?, ?, ?, ?)"));
    for (const SendObject &object : listed.objects) {
        const QVariantList values{job, object.path, object.sopClassUid, object.sopInstanceUid,
            object.transferSyntaxUid, int(object.state), int(object.outcome.problem), object.outcome.detail};
        if (!m_store.run(insert, values)) {
            return false;
        }
    }
    QSqlQuery &update = m_store.prepared(
        QStringLiteral("UPDATE job SET unlisted = unlisted - ?, skipped_folders = skipped_folders + ?, "
                       "skipped_files = skipped_files + ? WHERE id = ?"));
    return m_store.run(update, {listed.paths, listed.skippedFolders, listed.skippedFiles, job})
        && transaction.commit();
}

bool SendPaths::end(qint64 job)
{
    const std::lock_guard lock(SendStore::writers());
    WriteTransaction transaction(m_store.database());
    QSqlQuery &rest = m_store.prepared(
        QStringLiteral("UPDATE job SET skipped_files = skipped_files + unlisted, unlisted = 0 WHERE id = ?"));
    rest.bindValue(0, job);
    QSqlQuery &done = m_store.prepared(QStringLiteral("DELETE FROM paths WHERE job = ?"));
    done.bindValue(0, job);
    return transaction.isActive() && m_store.run(rest) && m_store.run(done) && transaction.commit();
}
