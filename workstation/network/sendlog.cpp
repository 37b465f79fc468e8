#include "sendlog.h"

#include "sendschema.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QUuid>
#include <QVariant>

QString sendObjectColumns()
{
    return QStringLiteral("object.id, object.job, path, sop_class, sop_instance, transfer_syntax, "
                          "object.state, problem, status, network, detail, attempts, changed");
}

SendObject sendObjectOf(const QSqlQuery &row)
{
    SendObject object;
    object.id = row.value(0).toLongLong();
    object.job = row.value(1).toLongLong();
    object.path = row.value(2).toString();
    object.sopClassUid = row.value(3).toString();
    object.sopInstanceUid = row.value(4).toString();
    object.transferSyntaxUid = row.value(5).toString();
    object.state = SendObjectState(row.value(6).toInt());
    object.outcome.problem = StoreProblem(row.value(7).toInt());
    object.outcome.status = static_cast<quint16>(row.value(8).toInt());
    object.outcome.network.problem = NetworkProblem(row.value(9).toInt());
    object.outcome.detail = row.value(10).toString();
    object.outcome.network.detail = object.outcome.detail;
    object.attempts = row.value(11).toInt();
    if (!row.isNull(12)) {
        object.changed = QDateTime::fromMSecsSinceEpoch(row.value(12).toLongLong());
    }
    return object;
}

SendLog::SendLog(QString storePath)
    : m_storePath(std::move(storePath))
    , m_name(QUuid::createUuid().toString())
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
    db.setDatabaseName(m_storePath);
    db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=100"));
}

SendLog::~SendLog()
{
    QSqlDatabase::database(m_name, false).close();
    QSqlDatabase::removeDatabase(m_name);
}

bool SendLog::open() const
{
    QSqlDatabase db = QSqlDatabase::database(m_name, false);
    return db.isOpen() || db.open();
}

/// @param count negative for all
bool SendLog::select(QSqlQuery &query, qint64 job, int first, int count, bool onlyFailed) const
{
    const QString failedOnly = onlyFailed ? QStringLiteral(" AND state = $failed") : QString();
    query.setForwardOnly(true);
    query.prepare(
        withSendNumbers(QStringLiteral("SELECT %1 FROM object WHERE job = ?%2 ORDER BY id LIMIT ? OFFSET ?")
                            .arg(sendObjectColumns(), failedOnly)));
    query.bindValue(0, job);
    query.bindValue(1, count);
    query.bindValue(2, first);
    return query.exec();
}

QVector<SendObject> SendLog::objects(qint64 job, int first, int count, bool onlyFailed) const
{
    QVector<SendObject> found;
    if (!open()) {
        return found;
    }
    QSqlQuery query(QSqlDatabase::database(m_name, false));
    for (bool more = select(query, job, first, count, onlyFailed) && query.next(); more;
         more = query.next()) {
        found.append(sendObjectOf(query));
    }
    return found;
}

bool SendLog::visit(
    qint64 job, bool onlyFailed, const std::function<bool(const SendObject &object)> &visitor) const
{
    if (!open()) {
        return false;
    }
    QSqlQuery query(QSqlDatabase::database(m_name, false));
    if (!select(query, job, 0, -1, onlyFailed)) {
        return false;
    }
    while (query.next()) {
        if (!visitor(sendObjectOf(query))) {
            return true;
        }
    }
    return !query.lastError().isValid();
}

std::optional<QStringList> SendLog::waitingPaths(qint64 job) const
{
    if (!open()) {
        return std::nullopt;
    }
    QSqlQuery query(QSqlDatabase::database(m_name, false));
    query.setForwardOnly(true);
    query.prepare(withSendNumbers(
        QStringLiteral("SELECT path FROM object WHERE job = ? AND state IN ($waiting, $sending)")));
    query.bindValue(0, job);
    QStringList paths;
    for (bool more = query.exec() && query.next(); more; more = query.next()) {
        paths.append(query.value(0).toString());
    }
    return query.lastError().isValid() ? std::nullopt : std::make_optional(paths);
}

bool SendLog::mayNeed(const QString &folder) const
{
    if (!QFile::exists(m_storePath)) {
        return false;
    }
    if (!open()) {
        return true;
    }
    QSqlQuery query(QSqlDatabase::database(m_name, false));
    query.prepare(withSendNumbers(
        QStringLiteral("SELECT EXISTS(SELECT 1 FROM object WHERE path BETWEEN ? AND ? AND state <> $accepted)"
                       " OR EXISTS(SELECT 1 FROM paths)")));
    query.bindValue(0, QString(folder + QLatin1Char('/')));
    query.bindValue(1, QString(folder + QLatin1Char('0'))); // the character behind the slash
    return !query.exec() || !query.next() || query.value(0).toBool();
}
