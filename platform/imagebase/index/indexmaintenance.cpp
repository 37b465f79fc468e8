#include "indexmaintenance.h"

#include "databaseerror.h"
#include "indexconnection.h"
#include "nativehandle.h"
#include "readsnapshot.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>
#include <QStorageInfo>

#include <cstdio>

namespace {

using End = MaintenanceResult::End;

/// SQLite's virtual machine asks after this many steps whether to go on: some milliseconds.
constexpr int stepsBetweenLooks = 10'000;
constexpr int damagesTold = 100;
/// Some megabytes: the progress moves and a stop is quick.
constexpr int pagesPerStep = 1000;
constexpr int busyPauseMs = 20;
constexpr int longestWaitMs = 3000;
/// The new file goes through the log before it takes the place of the old one.
constexpr int roomToCompact = 2;

int lookAtStop(void *stop)
{
    return static_cast<const std::atomic<bool> *>(stop)->load() ? 1 : 0;
}

/// Another program that writes is waited for only as long as a user waits for an answer.
int waitForOthers(void *stop, int calls)
{
    if (lookAtStop(stop) != 0 || calls * busyPauseMs >= longestWaitMs) {
        return 0;
    }
    sqlite3_sleep(busyPauseMs);
    return 1;
}

/// A connection on which every statement ends soon after the stop flag is set.
class Workplace
{
public:
    Workplace(const QString &path, const std::atomic<bool> &stop)
        : m_connection(path)
    {
        if (m_connection.isOpen()) {
            m_native = nativeHandle(m_connection.database());
            auto *flag = const_cast<std::atomic<bool> *>(&stop);
            sqlite3_progress_handler(m_native, stepsBetweenLooks, lookAtStop, flag);
            sqlite3_busy_handler(m_native, waitForOthers, flag);
        }
    }
    bool isOpen() const { return m_connection.isOpen() && m_native; }
    const ConnectionFailure &failure() const { return m_connection.failure(); }
    QSqlDatabase database() const { return m_connection.database(); }
    sqlite3 *native() const { return m_native; }

private:
    IndexConnection m_connection;
    sqlite3 *m_native = nullptr;
};

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

MaintenanceResult failed(sqlite3 *native, const QString &path)
{
    const QSqlError error({}, QString::fromUtf8(sqlite3_errmsg(native)), QSqlError::UnknownError,
        QString::number(sqlite3_errcode(native)));
    return failed(connectionFailureOf(error, path));
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

/// The file that a copy is written to until it is complete; gone at the end unless it was put in place.
class PartialFile
{
public:
    explicit PartialFile(const QString &target)
        : m_target(target)
        , m_path(target + QStringLiteral(".part"))
    {
        remove();
    }
    ~PartialFile() { remove(); }
    PartialFile(const PartialFile &) = delete;
    PartialFile &operator=(const PartialFile &) = delete;

    const QString &path() const { return m_path; }
    bool putInPlace() const
    {
        return std::rename(QFile::encodeName(m_path).constData(), QFile::encodeName(m_target).constData())
            == 0;
    }

private:
    void remove() const
    {
        QFile::remove(m_path);
        QFile::remove(m_path + QStringLiteral("-journal"));
    }

    QString m_target;
    QString m_path;
};

int copyPages(sqlite3_backup *copy, const std::atomic<bool> &stop, const IndexMaintenance::Progress &progress)
{
    int code = SQLITE_OK;
    while (!stop && (code == SQLITE_OK || code == SQLITE_BUSY || code == SQLITE_LOCKED)) {
        code = sqlite3_backup_step(copy, pagesPerStep);
        const int all = sqlite3_backup_pagecount(copy);
        if (all > 0 && progress) {
            progress(1.0 - double(sqlite3_backup_remaining(copy)) / all);
        }
        if (code == SQLITE_BUSY || code == SQLITE_LOCKED) {
            sqlite3_sleep(busyPauseMs);
        }
    }
    return code;
}

MaintenanceResult copyTo(sqlite3 *source, const QString &path, const std::atomic<bool> &stop,
    const IndexMaintenance::Progress &progress)
{
    sqlite3 *target = nullptr;
    MaintenanceResult result = ended(End::Stopped);
    if (sqlite3_open(path.toUtf8().constData(), &target) != SQLITE_OK) {
        result = failed(target, path);
    } else if (sqlite3_backup *copy = sqlite3_backup_init(target, "main", source, "main")) {
        const int code = copyPages(copy, stop, progress);
        const int finished = sqlite3_backup_finish(copy);
        if (code == SQLITE_DONE && finished == SQLITE_OK) {
            result.end = End::Done;
        } else if (!stop) {
            result = failed(target, path);
        }
    } else {
        result = failed(target, path);
    }
    sqlite3_close(target);
    return result;
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
    const Workplace place(m_path, m_stop);
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
    MaintenanceResult result;
    result.bytesBefore = indexSizeOnDisk(m_path);
    result.neededBytes = roomToCompact * result.bytesBefore;
    if (QStorageInfo(QFileInfo(m_path).path()).bytesAvailable() < result.neededBytes
        || QStorageInfo(QDir::tempPath()).bytesAvailable() < result.bytesBefore) {
        result.end = End::NoSpace;
        return result;
    }
    const Workplace place(m_path, m_stop);
    if (!place.isOpen()) {
        return failed(place.failure());
    }
    QSqlQuery query(place.database());
    query.exec(QStringLiteral("PRAGMA temp_store = FILE")); // a second index would fill the memory
    if (!query.exec(QStringLiteral("VACUUM"))) {
        return m_stop ? ended(End::Stopped) : failed(connectionFailureOf(query.lastError(), m_path));
    }
    query.exec(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    query.finish();
    result.end = End::Done;
    result.bytesAfter = indexSizeOnDisk(m_path);
    return result;
}

MaintenanceResult IndexMaintenance::backUp(const QString &target, const Progress &progress) const
{
    const Workplace place(m_path, m_stop);
    if (!place.isOpen()) {
        return failed(place.failure());
    }
    const PartialFile part(target);
    MaintenanceResult result;
    {
        // Held over all steps: a writer would make the copy begin anew, again and again.
        const ReadSnapshot snapshot(place.database());
        QSqlQuery(place.database()).exec(QStringLiteral("SELECT count(*) FROM sqlite_master"));
        result = copyTo(place.native(), part.path(), m_stop, progress);
    }
    if (result.end == End::Done) {
        result.bytesAfter = QFileInfo(part.path()).size();
        if (!part.putInPlace()) {
            ConnectionFailure failure;
            failure.reason = ConnectionFailure::Reason::ReadOnly;
            failure.path = target;
            return failed(failure);
        }
    }
    return result;
}
