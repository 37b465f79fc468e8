#include "transfertables.h"

#include <QSqlQuery>
#include <QVariant>

namespace {

bool run(const QSqlDatabase &db, const char *sql, const QString &uid)
{
    QSqlQuery query(db);
    query.prepare(QLatin1String(sql));
    query.bindValue(QStringLiteral(":uid"), uid);
    return query.exec();
}

} // namespace

bool TransferTables::enter(const QSqlDatabase &db, const QString &seriesUid)
{
    return run(db,
               "INSERT INTO series (seriesUID, recvnum) "
               "SELECT :uid, sum(NumberOfSeriesRelatedInstances) FROM generalseries "
               "WHERE SeriesInstanceUID = :uid HAVING count(*) > 0 "
               "ON CONFLICT (seriesUID) DO UPDATE SET recvnum = excluded.recvnum",
               seriesUid)
        && run(db,
            "INSERT OR IGNORE INTO images (SOPInstanceUID, seriesUID) "
            "SELECT imageformat.SOPInstanceUID, generalseries.SeriesInstanceUID FROM imageformat "
            "JOIN generalseries ON generalseries.pk = imageformat.series_fk "
            "WHERE generalseries.SeriesInstanceUID = :uid",
            seriesUid);
}
