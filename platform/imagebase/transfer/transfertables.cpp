#include "transfertables.h"

#include <QSqlQuery>
#include <QVariantList>

namespace {

bool run(const QSqlDatabase &db, const char *sql, const QVariantList &values, QSqlError *error = nullptr)
{
    QSqlQuery query(db);
    query.prepare(QLatin1String(sql));
    for (const QVariant &value : values) {
        query.addBindValue(value);
    }
    const bool isGood = query.exec();
    if (!isGood && error) {
        *error = query.lastError();
    }
    return isGood;
}

} // namespace

bool TransferTables::enterSeries(const QSqlDatabase &db, const QString &seriesUid)
{
    return run(db,
        "INSERT INTO series (seriesUID, recvnum) "
        "SELECT SeriesInstanceUID, sum(NumberOfSeriesRelatedInstances) FROM generalseries "
        "WHERE SeriesInstanceUID = ? GROUP BY SeriesInstanceUID "
        "ON CONFLICT (seriesUID) DO UPDATE SET recvnum = excluded.recvnum",
        {seriesUid});
}

bool TransferTables::enterImage(
    const QSqlDatabase &db, const QString &sopInstanceUid, const QString &seriesUid)
{
    return run(db, "INSERT OR IGNORE INTO images (SOPInstanceUID, seriesUID) VALUES (?, ?)",
        {sopInstanceUid, seriesUid});
}

bool TransferTables::enter(const QSqlDatabase &db, const QString &seriesUid)
{
    return enterSeries(db, seriesUid)
        && run(db,
            "INSERT OR IGNORE INTO images (SOPInstanceUID, seriesUID) "
            "SELECT imageformat.SOPInstanceUID, generalseries.SeriesInstanceUID FROM imageformat "
            "JOIN generalseries ON generalseries.pk = imageformat.series_fk "
            "WHERE generalseries.SeriesInstanceUID = ?",
            {seriesUid});
}

bool TransferTables::flag(
    const QSqlDatabase &db, const QString &sopInstanceUid, bool isInCloud, QSqlError *error)
{
    const int flag = isInCloud ? 1 : 0;
    return run(db, "UPDATE images SET Cloudflag = ? WHERE SOPInstanceUID = ? AND Cloudflag <> ?",
        {flag, sopInstanceUid, flag}, error);
}
