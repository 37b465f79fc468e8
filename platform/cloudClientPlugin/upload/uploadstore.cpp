#include "uploadstore.h"

#include "indexconnection.h"
#include "transfertables.h"

#include <QFileInfo>
#include <QSet>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace {

constexpr QLatin1Char listMark('\n');

/// Of uploadfile.State.
constexpr int waitingState = 0;
constexpr int storedState = 2;
constexpr int failedState = 3;

/// What tells one file of an image from its next: a place and the stamp that was imported.
constexpr char versionOfImage[] =
    "imageformat.FilePath || char(10) || ifnull(FileSize, '') || char(10) || ifnull(FileTime, '') || "
    "char(10) || ifnull(FileInode, '')";

/// A null text would be NULL, which these columns refuse.
QString present(const QString &text)
{
    return text.isNull() ? QLatin1String("") : text;
}

/// Detail is the service's own text: bounded, as it goes into the index.
QString bounded(const QString &detail)
{
    constexpr int most = 500;
    return detail.left(most);
}

} // namespace

UploadStore::UploadStore(QString databasePath, int waitMs)
    : m_databasePath(std::move(databasePath))
    , m_waitMs(waitMs)
{ }

UploadStore::~UploadStore() = default;

bool UploadStore::open()
{
    if (!m_connection || !m_connection->isOpen()) {
        m_connection = std::make_unique<IndexConnection>(m_databasePath, m_waitMs);
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
                                 "WHERE task_fk = ? AND State = 0 AND pk > ? ORDER BY pk LIMIT ?"));
    query.addBindValue(task);
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
    QStringList ids;
    for (const qint64 file : files) {
        ids.append(QString::number(file));
    }
    QHash<qint64, UploadFile> waiting;
    QSqlQuery query(database());
    query.exec(
        QStringLiteral("SELECT uploadfile.pk, uploadfile.FilePath, uploadfile.SOPInstanceUID, Bytes, %1 "
                       "FROM uploadfile LEFT JOIN imageformat USING (SOPInstanceUID, FilePath) "
                       "WHERE uploadfile.pk IN (%2) AND State = 0")
            .arg(QLatin1String(versionOfImage), ids.join(QLatin1Char(','))));
    while (query.next()) {
        const qint64 id = query.value(0).toLongLong();
        waiting.insert(id,
            {id, query.value(1).toString(), query.value(2).toString(), query.value(3).toLongLong(),
                query.value(4).toString()});
    }
    if (query.lastError().isValid()) {
        return {};
    }
    return waiting;
}

QString UploadStore::pathOf(qint64 file)
{
    if (!open()) {
        return {};
    }
    QSqlQuery query(database());
    query.prepare(QStringLiteral("SELECT FilePath FROM uploadfile WHERE pk = ? AND State = 0"));
    query.addBindValue(file);
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
                                 "WHERE task_fk = ? AND State = 3 ORDER BY pk"));
    query.addBindValue(task);
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

/// The image of the index that a file is; none where it is not in the index under this path.
void UploadStore::lookUp(QSqlQuery &known, UploadOrder::File *file)
{
    known.bindValue(QStringLiteral(":path"), file->path);
    if (known.exec() && known.next()) {
        file->sopInstance = known.value(0).toString();
        file->series = known.value(1).toString();
    }
    known.finish();
}

bool UploadStore::addFiles(qint64 task, const QVector<UploadOrder::File> &files)
{
    QSqlQuery known(database());
    known.prepare(QStringLiteral(
        "SELECT imageformat.SOPInstanceUID, generalseries.SeriesInstanceUID FROM imageformat "
        "JOIN generalseries ON generalseries.pk = imageformat.series_fk WHERE FilePath = :path "
        "AND (ifnull(SourcePath, FilePath) = :path OR IrradiationEventUID = 'copy')"));
    QSqlQuery insert(database());
    insert.prepare(QStringLiteral("INSERT INTO uploadfile (task_fk, FilePath, SOPInstanceUID, "
                                  "SeriesInstanceUID, Bytes) VALUES (?, ?, ?, ?, ?)"));
    QSet<QString> entered;
    for (UploadOrder::File file : files) {
        if (file.sopInstance.isEmpty()) {
            lookUp(known, &file);
        }
        if (!file.series.isEmpty() && !entered.contains(file.series)) {
            entered.insert(file.series);
            if (!TransferTables::enter(database(), file.series)) {
                return false;
            }
        }
        insert.bindValue(0, task);
        insert.bindValue(1, present(file.path));
        insert.bindValue(2, file.sopInstance);
        insert.bindValue(3, file.series);
        insert.bindValue(4, file.bytes);
        if (!insert.exec()) {
            return false;
        }
    }
    return true;
}

bool UploadStore::add(const UploadOrder &order)
{
    QVector<UploadOrder::File> files = order.files;
    for (UploadOrder::File &file : files) { // a slow disk is waited for before the lock of writers is taken
        file.bytes = QFileInfo(file.path).size();
    }
    return write([&] {
        return run("INSERT INTO uploadtask (pk, Service, PatientName, SeriesUIDs) VALUES (?, ?, ?, ?)",
                   {order.id, present(order.service), present(order.patientName),
                       present(order.series.join(listMark))})
            && addFiles(order.id, files);
    });
}

bool UploadStore::record(const QVector<UploadOutcome> &outcomes)
{
    return write([&] {
        QSqlQuery file(database());
        file.prepare(
            QStringLiteral("UPDATE uploadfile SET State = ?, SOPInstanceUID = ?, Fault = ?, Reason = ?, "
                           "Problem = ?, Detail = ?, Tries = ?, Version = ? WHERE pk = ? AND State = 0 "
                           "AND NOT EXISTS (SELECT 1 FROM imageformat WHERE SOPInstanceUID = ? AND %1 <> ?)")
                .arg(QLatin1String(versionOfImage)));
        for (const UploadOutcome &outcome : outcomes) {
            const bool isStored = outcome.fault == UploadFault::Kind::None;
            const QVariantList values{isStored ? storedState : failedState, outcome.file.sopInstance,
                int(outcome.fault), outcome.reason, int(outcome.failure.problem),
                bounded(outcome.failure.detail), outcome.tries, outcome.file.version, outcome.file.id,
                outcome.file.sopInstance, outcome.file.version};
            for (int value = 0; value < values.size(); ++value) {
                file.bindValue(value, values[value]);
            }
            if (!file.exec()) {
                return false;
            }
            // Only the file that the index knows has told what the index knows.
            const bool isKnown = !outcome.file.version.isNull() && file.numRowsAffected() > 0;
            if (isStored && isKnown && !TransferTables::flag(database(), outcome.file.sopInstance)) {
                return false;
            }
        }
        return true;
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
    return write([&] {
        QSqlQuery stored(database());
        stored.prepare(
            QStringLiteral("SELECT SOPInstanceUID FROM uploadfile JOIN imageformat USING (SOPInstanceUID) "
                           "WHERE task_fk = ? AND State = ? AND Version = %1")
                .arg(QLatin1String(versionOfImage)));
        stored.addBindValue(task);
        stored.addBindValue(storedState);
        bool isGood = stored.exec();
        while (isGood && stored.next()) {
            isGood = TransferTables::flag(database(), stored.value(0).toString());
        }
        return isGood && !stored.lastError().isValid();
    });
}

bool UploadStore::remove(qint64 task)
{
    return write([&] { return run("DELETE FROM uploadtask WHERE pk = ?", {task}); });
}
