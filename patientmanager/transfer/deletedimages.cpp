#include "deletedimages.h"

#include "importmarker.h"
#include "recordsql.h"

#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <iterator>

namespace {

QSqlQuery boundTo(const QSqlDatabase &db, const QString &sql, const QList<qlonglong> &keys)
{
    QSqlQuery query(db);
    query.setForwardOnly(true);
    query.prepare(sql);
    query.bindValue(QStringLiteral(":keys"), RecordSql::keyList(keys));
    return query;
}

template <typename Take>
bool readAll(QSqlQuery &query, QSqlError *error, Take take)
{
    query.exec();
    while (query.next()) {
        take(query);
    }
    *error = query.lastError();
    return !error->isValid();
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

bool sharedCopies(const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys,
    QSet<QString> *paths, QSqlError *error)
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
    return readAll(query, error, [paths](const QSqlQuery &row) { paths->insert(row.value(0).toString()); });
}

bool keysBelow(const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys, RecordLevel lower,
    QList<qlonglong> *below, QSqlError *error)
{
    QSqlQuery query = boundTo(db, RecordSql::keysBelow(level, lower), keys);
    return readAll(query, error, [below](const QSqlQuery &row) { below->append(row.value(0).toLongLong()); });
}

bool split(const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys, qlonglong newest,
    QList<qlonglong> *whole, QList<qlonglong> *mixed, QSqlError *error)
{
    QList<qlonglong> images;
    if (level == RecordLevel::Image) {
        QSqlQuery query = boundTo(db,
            QStringLiteral("SELECT pk FROM imageformat WHERE pk IN (%1)")
                .arg(RecordSql::keysBelow(level, level)),
            keys);
        QSet<qlonglong> there;
        const auto take = [&there](const QSqlQuery &row) { there.insert(row.value(0).toLongLong()); };
        std::copy_if(keys.cbegin(), keys.cend(), std::back_inserter(images),
            [newest](qlonglong image) { return image <= newest; });
        const bool good = readAll(query, error, take);
        std::copy_if(images.cbegin(), images.cend(), std::back_inserter(*whole),
            [&there](qlonglong image) { return there.contains(image); });
        return good;
    }
    // Seldom is any image later, which one statement tells of all keys.
    if (!keysBelow(db, level, keys, RecordLevel::Image, &images, error)) {
        return false;
    }
    const auto isLater = [newest](qlonglong image) { return image > newest; };
    if (std::none_of(images.cbegin(), images.cend(), isLater)) {
        *whole = keys;
        return true;
    }
    for (const qlonglong key : keys) {
        images.clear();
        if (!keysBelow(db, level, {key}, RecordLevel::Image, &images, error)) {
            return false;
        }
        const bool hasLater = std::any_of(images.cbegin(), images.cend(), isLater);
        (hasLater ? mixed : whole)->append(key);
    }
    return true;
}

} // namespace DeletedImages
