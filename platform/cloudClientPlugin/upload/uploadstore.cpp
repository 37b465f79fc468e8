#include "uploadstore.h"

#include "indexconnection.h"
#include "transfertables.h"
#include "uploadentry.h"
#include "uploadoutcomes.h"
#include "uploadtables.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

using namespace UploadTables;

struct UploadStore::Kept
{
    explicit Kept(const QSqlDatabase &db)
        : tables(db)
        , outcomes(db, tables)
        , waiting(db,
              QStringLiteral("SELECT uploadfile.FilePath, uploadfile.SOPInstanceUID, Bytes, %1 "
                             "FROM uploadfile LEFT JOIN imageformat USING (SOPInstanceUID, FilePath) "
                             "WHERE uploadfile.pk = ? AND State = ?")
                  .arg(versionOfImage))
    { }

    TransferTables tables;
    UploadOutcomes outcomes;
    KeptStatement waiting;
};

UploadStore::UploadStore(QString databasePath, int waitMs)
    : m_databasePath(std::move(databasePath))
    , m_waitMs(waitMs)
{ }

UploadStore::~UploadStore() = default;

bool UploadStore::open()
{
    if (!m_connection || !m_connection->isOpen()) {
        m_kept.reset();
        m_connection = std::make_unique<IndexConnection>(m_databasePath, m_waitMs);
        m_kept = std::make_unique<Kept>(m_connection->database());
    }
    return m_connection->isOpen();
}

QSqlDatabase UploadStore::database() const
{
    return m_connection->database();
}

qint64 UploadStore::dataVersion()
{
    QSqlQuery query(database());
    return query.exec(QStringLiteral("PRAGMA data_version")) && query.next() ? query.value(0).toLongLong()
                                                                             : -1;
}

UploadRows UploadStore::tasks()
{
    if (!open()) {
        return {};
    }
    QVector<UploadRow> rows;
    QSqlQuery query(database());
    query.exec(QStringLiteral("SELECT pk, Service, PatientName, SeriesUIDs, Files, Stored, Failed, Bytes, "
                              "BytesStored FROM uploadtask ORDER BY pk"));
    while (query.next()) {
        int column = 0;
        UploadRow row;
        row.id = query.value(column++).toLongLong();
        row.service = query.value(column++).toString();
        row.patientName = query.value(column++).toString();
        row.series = query.value(column++).toString().split(listMark, Qt::SkipEmptyParts);
        row.files = query.value(column++).toInt();
        row.stored = query.value(column++).toInt();
        row.failed = query.value(column++).toInt();
        row.bytes = query.value(column++).toLongLong();
        row.bytesStored = query.value(column++).toLongLong();
        rows.append(row);
    }
    return query.lastError().isValid() ? UploadRows() : rows;
}

QVector<UploadFile> UploadStore::waiting(qint64 task, qint64 after, int most)
{
    QVector<UploadFile> files;
    if (!open()) {
        return files;
    }
    QSqlQuery query(database());
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT pk, FilePath, SOPInstanceUID, Bytes FROM uploadfile "
                                 "WHERE task_fk = ? AND State = ? AND pk > ? ORDER BY pk LIMIT ?"));
    query.addBindValue(task);
    query.addBindValue(waitingState);
    query.addBindValue(after);
    query.addBindValue(most);
    query.exec();
    while (query.next()) {
        files.append({query.value(0).toLongLong(), query.value(1).toString(), query.value(2).toString(),
            query.value(3).toLongLong(), {}});
    }
    return files;
}

std::optional<QHash<qint64, UploadFile>> UploadStore::stillWaiting(const QVector<qint64> &files)
{
    if (!open()) {
        return {};
    }
    QHash<qint64, UploadFile> waiting;
    KeptStatement &file = m_kept->waiting;
    for (const qint64 id : files) {
        if (!file.exec({id, waitingState})) {
            return {};
        }
        if (file.next()) {
            waiting.insert(id,
                {id, file.value(0).toString(), file.value(1).toString(), file.value(2).toLongLong(),
                    file.value(3).toString()});
        }
        file.finish();
    }
    return waiting;
}

QString UploadStore::pathOf(qint64 file)
{
    if (!open()) {
        return {};
    }
    QSqlQuery query(database());
    query.prepare(QStringLiteral("SELECT FilePath FROM uploadfile WHERE pk = ? AND State = ?"));
    query.addBindValue(file);
    query.addBindValue(waitingState);
    return query.exec() && query.next() ? query.value(0).toString() : QString();
}

QVector<UploadFault> UploadStore::faults(qint64 task)
{
    QVector<UploadFault> faults;
    if (!open()) {
        return faults;
    }
    QSqlQuery query(database());
    query.prepare(QStringLiteral("SELECT FilePath, Fault, Reason, Problem, Detail FROM uploadfile "
                                 "WHERE task_fk = ? AND State = ? ORDER BY pk"));
    query.addBindValue(task);
    query.addBindValue(failedState);
    query.exec();
    while (query.next()) {
        UploadFault fault;
        fault.path = query.value(0).toString();
        fault.kind = static_cast<UploadFault::Kind>(query.value(1).toInt());
        fault.reason = query.value(2).toInt();
        fault.failure.problem = static_cast<WebProblem>(query.value(3).toInt());
        fault.failure.detail = query.value(4).toString();
        fault.failure.status = fault.kind == UploadFault::Kind::Request ? fault.reason : 0;
        faults.append(fault);
    }
    return faults;
}

bool UploadStore::write(const std::function<bool()> &statements)
{
    if (!open()) {
        return false;
    }
    WriteTransaction transaction(database());
    return transaction.isActive() && statements() && transaction.commit();
}

bool UploadStore::run(const char *sql, const QVariantList &values)
{
    QSqlQuery query(database());
    query.prepare(QLatin1String(sql));
    for (const QVariant &value : values) {
        query.addBindValue(value);
    }
    return query.exec();
}

bool UploadStore::add(const UploadOrder &order)
{
    const UploadOrder measured = UploadEntry::measured(order);
    return write([&] { return UploadEntry::enter(database(), m_kept->tables, measured); });
}

bool UploadStore::record(const QVector<UploadOutcome> &outcomes)
{
    return write([&] {
        return std::all_of(outcomes.cbegin(), outcomes.cend(),
            [this](const UploadOutcome &outcome) { return m_kept->outcomes.record(outcome); });
    });
}

bool UploadStore::rename(qint64 task, const QString &patientName)
{
    return write([&] {
        return run("UPDATE uploadtask SET PatientName = ? WHERE pk = ?", {present(patientName), task});
    });
}

bool UploadStore::retryFailed(qint64 task)
{
    return write([&] {
        return run("UPDATE uploadfile SET State = ?, Fault = 0, Reason = 0, Problem = 0, Detail = NULL "
                   "WHERE task_fk = ? AND State = ?",
            {waitingState, task, failedState});
    });
}

bool UploadStore::flagStored(qint64 task)
{
    return write([&] { return m_kept->outcomes.flagStored(task); });
}

bool UploadStore::remove(qint64 task)
{
    return write([&] { return run("DELETE FROM uploadtask WHERE pk = ?", {task}); });
}
