#include "indexbackup.h"

#include "databaseerror.h"
#include "indexworkplace.h"
#include "readsnapshot.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>
#include <QTemporaryFile>

#include <cstdio>

#include <sqlite3.h>

namespace {

using End = MaintenanceResult::End;

/// Some megabytes: the progress moves and a stop is quick.
constexpr int pagesPerStep = 1000;
constexpr int busyPauseMs = 20;

MaintenanceResult failed(ConnectionFailure::Reason reason, const QString &path)
{
    MaintenanceResult result;
    result.failure.reason = reason;
    result.failure.path = path;
    return result;
}

MaintenanceResult failed(sqlite3 *native, const QString &path)
{
    const QSqlError error({}, QString::fromUtf8(sqlite3_errmsg(native)), QSqlError::UnknownError,
        QString::number(sqlite3_errcode(native)));
    MaintenanceResult result;
    result.failure = connectionFailureOf(error, path);
    return result;
}

/// A log that belongs to the file of this name: the copy would be read through it, and damaged.
bool hasLog(const QString &path)
{
    return QFileInfo(path + QStringLiteral("-wal")).size() > 0;
}

/// The file that a copy is written to until it is complete, of a name that nobody has yet and as open to
/// others as its source; gone at the end unless it was put in place.
class PartialFile
{
public:
    PartialFile(const QString &source, const QString &target)
        : m_target(target)
        , m_file(target + QStringLiteral(".XXXXXX"))
        , m_isMade(m_file.open() && m_file.setPermissions(QFile::permissions(source)))
    { }
    ~PartialFile()
    {
        if (m_isMade) {
            QFile::remove(path() + QStringLiteral("-journal"));
        }
    }
    PartialFile(const PartialFile &) = delete;
    PartialFile &operator=(const PartialFile &) = delete;

    bool isMade() const { return m_isMade; }
    QString path() const { return m_file.fileName(); }
    /// @return false where the target cannot be replaced
    bool putInPlace()
    {
        const bool isMoved =
            std::rename(QFile::encodeName(path()).constData(), QFile::encodeName(m_target).constData()) == 0;
        m_file.setAutoRemove(!isMoved);
        return isMoved;
    }

private:
    const QString m_target;
    QTemporaryFile m_file;
    const bool m_isMade;
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
    MaintenanceResult result;
    result.end = End::Stopped;
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

MaintenanceResult backUpIndex(const IndexWorkplace &place, const QString &target,
    const std::atomic<bool> &stop, const IndexMaintenance::Progress &progress)
{
    if (hasLog(target)) {
        return failed(ConnectionFailure::Reason::Locked, target);
    }
    PartialFile part(place.database().databaseName(), target);
    if (!part.isMade()) {
        return failed(ConnectionFailure::Reason::ReadOnly, target);
    }
    MaintenanceResult result;
    {
        // Held over all steps: a writer would make the copy begin anew, again and again.
        const ReadSnapshot snapshot(place.database());
        QSqlQuery(place.database()).exec(QStringLiteral("SELECT count(*) FROM sqlite_master"));
        result = copyTo(place.native(), part.path(), stop, progress);
    }
    if (result.end != End::Done) {
        return result;
    }
    result.bytesAfter = QFileInfo(part.path()).size();
    return part.putInPlace() ? result : failed(ConnectionFailure::Reason::ReadOnly, target);
}
