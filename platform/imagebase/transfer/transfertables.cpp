#include "transfertables.h"

TransferTables::TransferTables(const QSqlDatabase &db)
    : m_enterSeries(db,
        QStringLiteral("INSERT INTO series (seriesUID, recvnum) "
                       "SELECT SeriesInstanceUID, sum(NumberOfSeriesRelatedInstances) FROM generalseries "
                       "WHERE SeriesInstanceUID = ? GROUP BY SeriesInstanceUID "
                       "ON CONFLICT (seriesUID) DO UPDATE SET recvnum = excluded.recvnum"))
    , m_enterImages(db,
          QStringLiteral(
              "INSERT OR IGNORE INTO images (SOPInstanceUID, seriesUID) "
              "SELECT imageformat.SOPInstanceUID, generalseries.SeriesInstanceUID FROM imageformat "
              "JOIN generalseries ON generalseries.pk = imageformat.series_fk "
              "WHERE generalseries.SeriesInstanceUID = ?"))
    , m_enterImage(
          db, QStringLiteral("INSERT OR IGNORE INTO images (SOPInstanceUID, seriesUID) VALUES (?, ?)"))
    , m_flag(
          db, QStringLiteral("UPDATE images SET Cloudflag = ? WHERE SOPInstanceUID = ? AND Cloudflag <> ?"))
{ }

bool TransferTables::run(KeptStatement &statement, const QVariantList &values)
{
    const bool isGood = statement.exec(values);
    if (!isGood) {
        m_error = statement.error();
    }
    statement.finish();
    return isGood;
}

bool TransferTables::enterSeries(const QString &seriesUid)
{
    return run(m_enterSeries, {seriesUid});
}

bool TransferTables::enterImage(const QString &sopInstanceUid, const QString &seriesUid)
{
    return run(m_enterImage, {sopInstanceUid, seriesUid});
}

bool TransferTables::enter(const QString &seriesUid)
{
    return enterSeries(seriesUid) && run(m_enterImages, {seriesUid});
}

bool TransferTables::flag(const QString &sopInstanceUid, bool isInCloud)
{
    const int flag = isInCloud ? 1 : 0;
    return run(m_flag, {flag, sopInstanceUid, flag});
}
