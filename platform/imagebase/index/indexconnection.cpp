#include "indexconnection.h"

#include "databaseerror.h"
#include "foundkeys.h"
#include "longwrite.h"
#include "nativehandle.h"
#include "schema.h"
#include "textfold.h"

#include <QFileInfo>
#include <QSqlQuery>
#include <QUuid>

#include <algorithm>

#include <unistd.h>

namespace {

constexpr char syncAtCheckpoints[] = "PRAGMA synchronous = NORMAL";
constexpr int lockPollMicroseconds = 1000;
constexpr intptr_t longWriteWaitMs = 250; ///< it outlasts whatever one could wait for

/// SQLite's own waiting sleeps up to 100 ms at a time and misses the short gaps that a busy writer leaves.
int waitForLock(void *milliseconds, int calls)
{
    const auto usual = reinterpret_cast<intptr_t>(milliseconds);
    const intptr_t longest = LongWrite::isAnyRunning() ? std::min(usual, longWriteWaitMs) : usual;
    if (calls * lockPollMicroseconds / 1000 >= longest) {
        return 0;
    }
    usleep(lockPollMicroseconds);
    return 1;
}

} // namespace

QSqlError IndexConnection::configure(QSqlDatabase &db, int waitMs)
{
    setLockWait(db, waitMs);
    registerTextFunctions(db);
    registerFoundKeys(db);
    QSqlQuery query(db);
    const bool good = query.exec(QStringLiteral("PRAGMA foreign_keys = ON"))
        && query.exec(QStringLiteral("PRAGMA journal_mode = WAL"))
        && query.exec(QLatin1String(syncAtCheckpoints))
        // What a statement could have to undo, triggers included, is kept in memory and not in a file.
        && query.exec(QStringLiteral("PRAGMA temp_store = MEMORY"));
    return good ? QSqlError() : query.lastError();
}

void IndexConnection::setLockWait(const QSqlDatabase &db, int milliseconds)
{
    if (sqlite3 *native = nativeHandle(db)) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): a number is all that the handler needs
        void *wait = reinterpret_cast<void *>(static_cast<intptr_t>(milliseconds));
        sqlite3_busy_handler(native, waitForLock, wait);
    }
}

void IndexConnection::keepTablesInMemory(const QSqlDatabase &db)
{
    constexpr int cacheKib = 32 * 1024;
    QSqlQuery(db).exec(QStringLiteral("PRAGMA cache_size = -%1").arg(cacheKib));
}

void IndexConnection::syncEveryCommit(const QSqlDatabase &db)
{
    QSqlQuery(db).exec(QStringLiteral("PRAGMA synchronous = FULL"));
}

void IndexConnection::syncSeldom(const QSqlDatabase &db)
{
    QSqlQuery(db).exec(QLatin1String(syncAtCheckpoints));
}

bool IndexConnection::isInTransaction(const QSqlDatabase &db)
{
    sqlite3 *native = nativeHandle(db);
    return native && sqlite3_get_autocommit(native) == 0;
}

IndexConnection::IndexConnection(const QString &databasePath, int waitMs)
    : m_name(QUuid::createUuid().toString())
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
    db.setDatabaseName(databasePath);
    m_failure = open(db, waitMs);
    if (!isOpen()) {
        db.close();
    }
}

/// A worker is as careful as createConnection(): what is no index of this version is not touched.
ConnectionFailure IndexConnection::open(QSqlDatabase &db, int waitMs) const
{
    // Opening would create a missing file: an index appears only through createConnection().
    if (!QFileInfo::exists(db.databaseName()) || !db.open()) {
        return connectionFailureOf(db.lastError(), db.databaseName());
    }
    setLockWait(db, waitMs);
    Schema::Identity identity;
    QSqlError error = Schema::readIdentity(db, &identity);
    if (!error.isValid()) {
        ConnectionFailure failure = Schema::refusal(identity, db.databaseName());
        if (failure.reason != ConnectionFailure::Reason::None) {
            return failure;
        }
        error = configure(db, waitMs);
    }
    return error.isValid() ? connectionFailureOf(error, db.databaseName()) : ConnectionFailure();
}

IndexConnection::~IndexConnection()
{
    QSqlDatabase::database(m_name, false).close();
    QSqlDatabase::removeDatabase(m_name);
}

QSqlDatabase IndexConnection::database() const
{
    return QSqlDatabase::database(m_name, false);
}

WriteTransaction::WriteTransaction(const QSqlDatabase &db)
    : m_db(db)
{
    QSqlQuery query(m_db);
    m_active = query.exec(QStringLiteral("BEGIN IMMEDIATE"));
    m_error = query.lastError();
}

WriteTransaction::~WriteTransaction()
{
    rollback();
}

bool WriteTransaction::commit()
{
    QSqlQuery query(m_db);
    if (!m_active || !query.exec(QStringLiteral("COMMIT"))) {
        m_error = query.lastError();
        return false;
    }
    m_active = false;
    return true;
}

void WriteTransaction::rollback()
{
    if (m_active) {
        QSqlQuery(m_db).exec(QStringLiteral("ROLLBACK"));
        m_active = false;
    }
}
