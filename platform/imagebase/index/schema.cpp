#include "schema.h"

#include "indexconnection.h"

#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <sqlite3.h>

// The resource lies in this library; a static build would drop it unless it is named.
static void keepResource()
{
    Q_INIT_RESOURCE(imagebase);
}

namespace {

QSqlError readNumber(QSqlDatabase &db, const QString &sql, int *number)
{
    QSqlQuery query(db);
    if (query.exec(sql) && query.next()) {
        *number = query.value(0).toInt();
        return {};
    }
    return query.lastError();
}

QString runScript(QSqlDatabase &db, int step)
{
    QFile file(QStringLiteral(":/imagebase/schema/%1.sql").arg(step));
    if (!file.open(QIODevice::ReadOnly)) {
        return file.errorString();
    }
    for (const QString &statement : Schema::statements(QString::fromUtf8(file.readAll()))) {
        QSqlQuery query(db);
        if (!query.exec(statement)) {
            return query.lastError().databaseText();
        }
    }
    return {};
}

} // namespace

namespace Schema {

QSqlError readIdentity(QSqlDatabase &db, Identity *identity)
{
    int tables = 0;
    QSqlError error = readNumber(db, QStringLiteral("SELECT count(*) FROM sqlite_master"), &tables);
    if (!error.isValid()) {
        error = readNumber(db, QStringLiteral("PRAGMA application_id"), &identity->applicationId);
    }
    if (!error.isValid()) {
        error = readNumber(db, QStringLiteral("PRAGMA user_version"), &identity->version);
    }
    identity->empty = tables == 0;
    return error;
}

ConnectionFailure refusal(const Identity &identity, const QString &path)
{
    using Reason = ConnectionFailure::Reason;
    ConnectionFailure failure;
    failure.path = path;
    if (identity.applicationId != applicationId) {
        failure.reason = Reason::Foreign;
    } else if (identity.version != currentVersion) {
        failure.reason = identity.version > currentVersion ? Reason::Newer : Reason::UpgradeFailed;
    }
    return failure;
}

QString upgrade(QSqlDatabase &db, int version)
{
    keepResource();
    WriteTransaction transaction(db);
    if (!transaction.isActive()) {
        return transaction.error().databaseText();
    }
    for (int step = version + 1; step <= currentVersion; ++step) {
        const QString error = runScript(db, step);
        if (!error.isEmpty()) {
            return error;
        }
    }
    QSqlQuery mark(db);
    if (!mark.exec(QStringLiteral("PRAGMA application_id = %1").arg(applicationId))
        || !mark.exec(QStringLiteral("PRAGMA user_version = %1").arg(currentVersion))) {
        return mark.lastError().databaseText();
    }
    return transaction.commit() ? QString() : transaction.error().databaseText();
}

QStringList statements(const QString &script)
{
    QStringList result;
    QString statement;
    for (const QString &line : script.split(QLatin1Char('\n'))) {
        const bool between = statement.isEmpty();
        if (between && (line.trimmed().isEmpty() || line.startsWith(QLatin1String("--")))) {
            continue;
        }
        statement += line + QLatin1Char('\n');
        if (sqlite3_complete(statement.toUtf8().constData()) != 0) {
            result.append(statement);
            statement.clear();
        }
    }
    return result;
}

} // namespace Schema
