#include "dabasehelper.h"

#include "attributes.h"
#include "indexconnection.h"
#include "recordsql.h"
#include "thumbnailfiles.h"

#include <QSet>
#include <QSqlQuery>
#include <QVariant>

#include <optional>

namespace {

std::optional<RecordLevel> levelOf(int number)
{
    if (number < int(RecordLevel::Patient) || number > int(RecordLevel::Image)) {
        return std::nullopt;
    }
    return RecordLevel(number);
}

QString tableOf(RecordLevel level)
{
    return QLatin1String(recordTableName(level));
}

/// The keys of the series that go with the records: of images, those that lose all of theirs.
QString seriesThatGo(RecordLevel level)
{
    if (level != RecordLevel::Image) {
        return RecordSql::keysBelow(level, RecordLevel::Series);
    }
    return QStringLiteral("SELECT series_fk FROM imageformat WHERE pk IN (%1) EXCEPT "
                          "SELECT series_fk FROM imageformat WHERE pk NOT IN (%1) AND series_fk IN "
                          "(SELECT series_fk FROM imageformat WHERE pk IN (%1))")
        .arg(RecordSql::keysBelow(level, level));
}

} // namespace

DabaseHelper::DabaseHelper(QObject *parent)
    : DabaseHelper(QSqlDatabase::database(), parent)
{ }

DabaseHelper::DabaseHelper(const QSqlDatabase &db, QObject *parent)
    : QObject(parent)
    , m_db(db)
{ }

bool DabaseHelper::DeleteDBTable(int level, const QString & /*sql*/, const QList<qlonglong> &pks)
{
    const std::optional<RecordLevel> records = levelOf(level);
    if (!records) {
        return true;
    }
    const QString keys = RecordSql::keyList(pks);
    const QString uids = QStringLiteral("SELECT SOPInstanceUID FROM imageformat WHERE pk IN (%1)")
                             .arg(RecordSql::keysBelow(*records, RecordLevel::Image));
    QSet<QString> instances;
    QSqlQuery query(m_db);
    query.setForwardOnly(true);
    query.prepare(uids);
    query.bindValue(QStringLiteral(":keys"), keys);
    query.exec();
    while (query.next()) {
        instances.insert(query.value(0).toString());
    }
    query.finish();
    const bool good = inOneTransaction([&] {
        return run(QStringLiteral("DELETE FROM images WHERE SOPInstanceUID IN (%1)").arg(uids), keys)
            && run(QStringLiteral("DELETE FROM series WHERE seriesUID IN (SELECT SeriesInstanceUID FROM "
                                  "generalseries WHERE pk IN (%1)) AND NOT EXISTS (SELECT 1 FROM "
                                  "generalseries AS other WHERE other.SeriesInstanceUID = series.seriesUID "
                                  "AND other.pk NOT IN (%1))")
                       .arg(seriesThatGo(*records)),
                keys);
    });
    if (good) {
        ThumbnailFiles(m_db.databaseName()).remove(instances);
    }
    return good;
}

bool DabaseHelper::deleteTable(int level, const QList<qlonglong> &pks)
{
    const std::optional<RecordLevel> records = levelOf(level);
    return !records || inOneTransaction([&] {
        return run(QStringLiteral("DELETE FROM %1 WHERE pk IN (SELECT value FROM json_each(:keys))")
                       .arg(tableOf(*records)),
            RecordSql::keyList(pks));
    });
}

qlonglong DabaseHelper::getPreFK(int level, qlonglong pk) const
{
    const std::optional<RecordLevel> records = levelOf(level);
    if (!records || records == RecordLevel::Patient) {
        return 0;
    }
    QSqlQuery query(m_db);
    query.prepare(QStringLiteral("SELECT %1 FROM %2 WHERE pk = ?")
                      .arg(QLatin1String(recordParentColumn(*records)), tableOf(*records)));
    query.addBindValue(pk);
    return query.exec() && query.next() ? query.value(0).toLongLong() : 0;
}

int DabaseHelper::getTableSize(int level, qlonglong parentPk) const
{
    return getPkFromFk(level, parentPk).size();
}

QList<qlonglong> DabaseHelper::getPkFromFk(int level, qlonglong fk) const
{
    const std::optional<RecordLevel> records = levelOf(level);
    QList<qlonglong> keys;
    if (!records || records == RecordLevel::Patient) {
        return keys;
    }
    QSqlQuery query(m_db);
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT pk FROM %1 WHERE %2 = ? ORDER BY pk")
                      .arg(tableOf(*records), QLatin1String(recordParentColumn(*records))));
    query.addBindValue(fk);
    query.exec();
    while (query.next()) {
        keys.append(query.value(0).toLongLong());
    }
    return keys;
}

bool DabaseHelper::run(const QString &sql, const QString &keys)
{
    QSqlQuery query(m_db);
    bool good = query.prepare(sql);
    query.bindValue(QStringLiteral(":keys"), keys);
    good = good && query.exec();
    if (!good) {
        m_error = query.lastError();
    }
    return good;
}

bool DabaseHelper::inOneTransaction(const std::function<bool()> &change)
{
    if (IndexConnection::isInTransaction(m_db)) {
        return change();
    }
    WriteTransaction transaction(m_db);
    if (!transaction.isActive()) {
        m_error = transaction.error();
        return false;
    }
    if (!change()) {
        return false;
    }
    if (!transaction.commit()) {
        m_error = transaction.error();
        return false;
    }
    return true;
}
