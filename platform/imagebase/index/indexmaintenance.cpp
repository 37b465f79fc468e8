#include "indexmaintenance.h"

#include "databaseerror.h"
#include "indexbackup.h"
#include "indexworkplace.h"
#include "longwrite.h"
#include "sqlitetempfolder.h"

#include <QFileInfo>
#include <QSqlQuery>
#include <QStorageInfo>
#include <QVariant>

namespace {

using End = MaintenanceResult::End;

constexpr int damagesTold = 100;
/// The log takes the whole new index, besides what stands in it already.
constexpr int copiesBeside = 2;

MaintenanceResult ended(End end)
{
    MaintenanceResult result;
    result.end = end;
    return result;
}

MaintenanceResult failed(const ConnectionFailure &failure)
{
    MaintenanceResult result;
    result.failure = failure;
    return result;
}

QVector<BrokenReference> brokenReferences(const QSqlDatabase &db)
{
    enum Field { Table, Row, Parent };
    QVector<BrokenReference> broken;
    QSqlQuery query(db);
    query.exec(QStringLiteral("PRAGMA foreign_key_check"));
    while (query.next() && broken.size() < damagesTold) {
        broken.append(
            {query.value(Table).toString(), query.value(Row).toLongLong(), query.value(Parent).toString()});
    }
    return broken;
}

/// What a folder has to take, and whether it can.
MaintenanceResult roomFor(qint64 bytes, const QStorageInfo &device, const QString &folder)
{
    MaintenanceResult result = ended(device.bytesAvailable() < bytes ? End::NoSpace : End::Done);
    result.neededBytes = bytes;
    result.folder = folder;
    return result;
}

/// The new index grows in the folder of temporary files, then goes through the log beside the old one.
MaintenanceResult roomToCompact(const QString &path, qint64 bytes)
{
    const QString folder = QFileInfo(path).absolutePath();
    const QStorageInfo device(folder);
    const QString tempFolder = sqliteTempFolder();
    const QStorageInfo tempDevice(tempFolder);
    const qint64 beside = copiesBeside * bytes;
    if (device.device() == tempDevice.device() && device.rootPath() == tempDevice.rootPath()) {
        return roomFor(beside + bytes, device, folder);
    }
    const MaintenanceResult result = roomFor(beside, device, folder);
    return result.end == End::NoSpace ? result : roomFor(bytes, tempDevice, tempFolder);
}

} // namespace

qint64 indexSizeOnDisk(const QString &path)
{
    return QFileInfo(path).size() + QFileInfo(path + QLatin1String("-wal")).size();
}

IndexMaintenance::IndexMaintenance(QString databasePath, const std::atomic<bool> &stop)
    : m_path(std::move(databasePath))
    , m_stop(stop)
{ }

MaintenanceResult IndexMaintenance::check() const
{
    const IndexWorkplace place(m_path, m_stop);
    if (!place.isOpen()) {
        return failed(place.failure());
    }
    MaintenanceResult result = ended(End::Done);
    QSqlQuery query(place.database());
    if (!query.exec(QStringLiteral("PRAGMA integrity_check(%1)").arg(damagesTold))) {
        result.findings.append(query.lastError().databaseText());
    }
    while (query.next()) {
        result.findings.append(query.value(0).toString());
    }
    result.findings.removeAll(QStringLiteral("ok"));
    result.broken = brokenReferences(place.database());
    return m_stop ? ended(End::Stopped) : result;
}

MaintenanceResult IndexMaintenance::compact() const
{
    const qint64 before = indexSizeOnDisk(m_path);
    MaintenanceResult result = roomToCompact(m_path, before);
    result.bytesBefore = before;
    if (result.end == End::NoSpace) {
        return result;
    }
    const IndexWorkplace place(m_path, m_stop);
    if (!place.isOpen()) {
        return failed(place.failure());
    }
    const LongWrite running(LongWrite::Work::Compaction);
    QSqlQuery query(place.database());
    query.exec(QStringLiteral("PRAGMA temp_store = FILE")); // a second index would fill the memory
    if (!query.exec(QStringLiteral("VACUUM"))) {
        return m_stop ? ended(End::Stopped) : failed(connectionFailureOf(query.lastError(), m_path));
    }
    query.exec(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    query.finish();
    result.bytesAfter = indexSizeOnDisk(m_path);
    return result;
}

MaintenanceResult IndexMaintenance::backUp(const QString &target, const Progress &progress) const
{
    const IndexWorkplace place(m_path, m_stop);
    return place.isOpen() ? backUpIndex(place, target, m_stop, progress) : failed(place.failure());
}
