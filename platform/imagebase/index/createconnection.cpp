#include "createconnection.h"

#include "attributes.h"
#include "configlocation.h"
#include "databaseerror.h"
#include "indexconnection.h"
#include "schema.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QSqlError>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QUrl>
#include <QVariant>

namespace {

using Reason = ConnectionFailure::Reason;

/// Long enough for another program's short write, short enough for a window that waits to open.
constexpr int openWaitMs = 2000;

struct State
{
    QString chosenPath;
    ConnectionFailure failure;
};

State &state()
{
    static State instance;
    return instance;
}

ConnectionFailure failed(Reason reason, const QString &path, const QString &detail = {})
{
    ConnectionFailure failure;
    failure.reason = reason;
    failure.path = path;
    failure.detail = detail;
    return failure;
}

/// True for a database in write-ahead mode that nobody has open: its log is gone, and a plain read would make
/// one.
bool isAtRest(const QString &path)
{
    constexpr int writeVersionAt = 18; // in the file's header
    constexpr char writeAhead = 2;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(writeVersionAt + 1).endsWith(writeAhead)
        && !QFileInfo::exists(path + QStringLiteral("-wal"));
}

/// A connection of this function's own that is gone when it ends; read-only, so that a refused file stays as
/// it was, with nothing new beside it.
class Probe
{
public:
    explicit Probe(const QString &path)
        : m_path(path)
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name());
        const QString uri =
            QStringLiteral("file://") + QString::fromLatin1(QUrl::toPercentEncoding(path, "/"));
        db.setDatabaseName(isAtRest(path) ? uri + QStringLiteral("?immutable=1") : uri);
        db.setConnectOptions(
            QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=%1").arg(openWaitMs));
        db.open();
    }
    ~Probe()
    {
        QSqlDatabase::database(name(), false).close();
        QSqlDatabase::removeDatabase(name());
    }
    Probe(const Probe &) = delete;
    Probe &operator=(const Probe &) = delete;

    ConnectionFailure refusal(Schema::Identity *identity) const
    {
        QSqlDatabase db = QSqlDatabase::database(name(), false);
        const QSqlError error = db.isOpen() ? Schema::readIdentity(db, identity) : db.lastError();
        if (error.isValid()) {
            return connectionFailureOf(error, m_path);
        }
        const bool fresh = identity->empty && identity->version == 0;
        const ConnectionFailure failure = Schema::refusal(*identity, m_path);
        return fresh || failure.reason == Reason::UpgradeFailed ? ConnectionFailure() : failure;
    }

private:
    static QString name() { return QStringLiteral("imagebase-probe"); }

    QString m_path;
};

ConnectionFailure checkFile(const QString &path, Schema::Identity *identity)
{
    const QFileInfo file(path);
    if (!QDir().mkpath(file.absolutePath())) {
        return failed(Reason::FolderMissing, path);
    }
    if (file.exists() && (!file.isFile() || !file.isReadable())) {
        return failed(Reason::CannotOpen, path);
    }
    if (!QFileInfo(file.absolutePath()).isWritable() || (file.exists() && !file.isWritable())) {
        return failed(Reason::ReadOnly, path);
    }
    return file.exists() && file.size() > 0 ? Probe(path).refusal(identity) : ConnectionFailure();
}

/// Copies the index as it stands, beside itself, before its schema changes.
QString backUp(QSqlDatabase &db, int version)
{
    const QString copy = QStringLiteral("%1.version%2.backup").arg(db.databaseName()).arg(version);
    if (QFileInfo::exists(copy)) {
        return {};
    }
    QSqlQuery query(db);
    query.prepare(QStringLiteral("VACUUM INTO ?"));
    query.addBindValue(copy);
    return query.exec() ? QString() : query.lastError().databaseText();
}

/// Touches each record table, so that a damaged one is found here and not by an empty window.
ConnectionFailure readThrough(QSqlDatabase &db)
{
    for (const RecordLevel level :
        {RecordLevel::Patient, RecordLevel::Study, RecordLevel::Series, RecordLevel::Image}) {
        QSqlQuery query(db);
        const QString sql =
            QStringLiteral("SELECT * FROM %1 LIMIT 1").arg(QLatin1String(recordTableName(level)));
        if (!query.exec(sql) || (!query.next() && query.lastError().isValid())) {
            return connectionFailureOf(query.lastError(), db.databaseName());
        }
    }
    return {};
}

ConnectionFailure bringUp(QSqlDatabase &db, const Schema::Identity &identity)
{
    if (!db.open()) {
        return connectionFailureOf(db.lastError(), db.databaseName());
    }
    const QSqlError refused = IndexConnection::configure(db, openWaitMs);
    if (refused.isValid()) {
        return connectionFailureOf(refused, db.databaseName());
    }
    if (identity.version < Schema::currentVersion) {
        QString error = identity.version > 0 ? backUp(db, identity.version) : QString();
        if (error.isEmpty()) {
            error = Schema::upgrade(db, identity.version);
        }
        if (!error.isEmpty()) {
            return failed(Reason::UpgradeFailed, db.databaseName(), error);
        }
    }
    IndexConnection::setLockWait(db, IndexConnection::lockWaitMs);
    IndexConnection::keepTablesInMemory(db);
    return readThrough(db);
}

/// Without its name, nobody can open it again by asking for the default connection.
void removeDefault()
{
    const QString name = QLatin1String(QSqlDatabase::defaultConnection);
    QSqlDatabase::database(name, false).close();
    QSqlDatabase::removeDatabase(name);
}

ConnectionFailure openDefault(const QString &path)
{
    Schema::Identity identity;
    ConnectionFailure failure = checkFile(path, &identity);
    if (failure.reason != Reason::None) {
        return failure;
    }
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
        db.setDatabaseName(path);
        failure = bringUp(db, identity);
    }
    if (failure.reason != Reason::None) {
        removeDefault();
    }
    return failure;
}

} // namespace

void setDatabasePath(const QString &path)
{
    state().chosenPath = path.isEmpty() ? QString() : QFileInfo(path).absoluteFilePath();
}

QString databasePath()
{
    if (!state().chosenPath.isEmpty()) {
        return state().chosenPath;
    }
    const QString mainIni = ConfigLocation::checked(QLatin1String(ConfigKey::mainIni));
    if (!mainIni.isEmpty()) {
        const QString configured =
            QSettings(mainIni, QSettings::IniFormat).value(QLatin1String(ConfigKey::databasePath)).toString();
        if (!configured.isEmpty()) {
            return QFileInfo(configured).absoluteFilePath();
        }
    }
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    return folder.absoluteFilePath(QStringLiteral("patientmanager/index.db"));
}

bool createConnection()
{
    const QString name = QLatin1String(QSqlDatabase::defaultConnection);
    if (QSqlDatabase::contains(name) && QSqlDatabase::database(name, false).isOpen()) {
        state().failure = {};
        return true;
    }
    state().failure = openDefault(databasePath());
    return state().failure.reason == Reason::None;
}

ConnectionFailure connectionFailure()
{
    return state().failure;
}

void closeConnection()
{
    if (QSqlDatabase::contains(QLatin1String(QSqlDatabase::defaultConnection))) {
        removeDefault();
    }
    state().failure = {};
}
