#include "deletionjournal.h"

#include "indexconnection.h"
#include "recordsql.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSqlQuery>
#include <QVariant>

namespace {

QList<qlonglong> keysOf(const QByteArray &list)
{
    QList<qlonglong> keys;
    for (const QJsonValue key : QJsonDocument::fromJson(list).array()) {
        keys.append(qlonglong(key.toDouble()));
    }
    return keys;
}

/// Commits are safe from a power cut while it lives.
class SyncedCommits
{
public:
    explicit SyncedCommits(const QSqlDatabase &db)
        : m_db(db)
    {
        IndexConnection::syncEveryCommit(m_db);
    }
    ~SyncedCommits() { IndexConnection::syncSeldom(m_db); }
    SyncedCommits(const SyncedCommits &) = delete;
    SyncedCommits &operator=(const SyncedCommits &) = delete;

private:
    const QSqlDatabase m_db;
};

} // namespace

DeletionJournal::DeletionJournal(const QSqlDatabase &db)
    : m_db(db)
{ }

QSqlError DeletionJournal::note(BegunDeletion *deletion) const
{
    const SyncedCommits synced(m_db);
    WriteTransaction transaction(m_db);
    if (!transaction.isActive()) {
        return transaction.error();
    }
    QSqlQuery query(m_db);
    if (!query.exec(QStringLiteral("SELECT ifnull(max(pk), 0) FROM imageformat")) || !query.next()) {
        return query.lastError();
    }
    deletion->lastImage = query.value(0).toLongLong();
    query.prepare(
        QStringLiteral("INSERT INTO deletion (Level, RecordKeys, EveryFile, LastImage) VALUES (?, ?, ?, ?)"));
    query.addBindValue(int(deletion->level));
    query.addBindValue(RecordSql::keyList(deletion->keys));
    query.addBindValue(deletion->everyFile);
    query.addBindValue(deletion->lastImage);
    if (!query.exec()) {
        return query.lastError();
    }
    deletion->pk = query.lastInsertId().toLongLong();
    query.finish();
    return transaction.commit() ? QSqlError() : transaction.error();
}

bool DeletionJournal::forget(qlonglong pk) const
{
    QSqlQuery query(m_db);
    query.prepare(QStringLiteral("DELETE FROM deletion WHERE pk = ?"));
    query.addBindValue(pk);
    return query.exec();
}

QVector<BegunDeletion> DeletionJournal::begun() const
{
    QVector<BegunDeletion> found;
    QSqlQuery query(m_db);
    query.exec(
        QStringLiteral("SELECT pk, Level, RecordKeys, EveryFile, LastImage FROM deletion ORDER BY pk"));
    while (query.next()) {
        const int level = query.value(1).toInt();
        if (level >= int(RecordLevel::Patient) && level <= int(RecordLevel::Image)) {
            found.append({query.value(0).toLongLong(), RecordLevel(level),
                keysOf(query.value(2).toByteArray()), query.value(3).toBool(), query.value(4).toLongLong()});
        }
    }
    return found;
}
