#include "deletedimages.h"

#include "importmarker.h"
#include "recordsql.h"

#include <QSqlQuery>
#include <QVariant>

namespace {

QSqlQuery boundTo(const QSqlDatabase &db, const QString &sql, const QList<qlonglong> &keys)
{
    QSqlQuery query(db);
    query.setForwardOnly(true);
    query.prepare(sql);
    query.bindValue(QStringLiteral(":keys"), RecordSql::keyList(keys));
    return query;
}

} // namespace

namespace DeletedImages {

int count(const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys)
{
    QSqlQuery query = boundTo(db,
        QStringLiteral("SELECT count(*) FROM (%1)").arg(RecordSql::keysBelow(level, RecordLevel::Image)),
        keys);
    return query.exec() && query.next() ? query.value(0).toInt() : 0;
}

QSet<QString> sharedCopies(const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys)
{
    QSqlQuery query = boundTo(db,
        QStringLiteral(
            "WITH gone AS MATERIALIZED (SELECT pk AS key, FilePath AS path FROM imageformat WHERE pk IN (%1) "
            "AND IrradiationEventUID = '%2') "
            "SELECT path FROM gone JOIN imageformat AS other ON other.FilePath = path "
            "AND other.IrradiationEventUID = '%2' AND other.pk NOT IN (%1) "
            "UNION SELECT path FROM gone JOIN imageformat AS other "
            "ON ifnull(other.SourcePath, other.FilePath) = path AND other.SourcePath IS NULL "
            "AND other.pk NOT IN (%1)")
            .arg(RecordSql::keysBelow(level, RecordLevel::Image), QLatin1String(copiedFileMarker)),
        keys);
    QSet<QString> paths;
    query.exec();
    while (query.next()) {
        paths.insert(query.value(0).toString());
    }
    return paths;
}

QList<qlonglong> upTo(
    const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys, qlonglong newest, bool *hasLater)
{
    QSqlQuery query = boundTo(db, RecordSql::keysBelow(level, RecordLevel::Image), keys);
    QList<qlonglong> images;
    *hasLater = false;
    query.exec();
    while (query.next()) {
        const qlonglong image = query.value(0).toLongLong();
        *hasLater = *hasLater || image > newest;
        if (image <= newest) {
            images.append(image);
        }
    }
    return images;
}

} // namespace DeletedImages
