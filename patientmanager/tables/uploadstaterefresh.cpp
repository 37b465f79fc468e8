#include "uploadstaterefresh.h"

#include "databaseerror.h"
#include "indexconnection.h"
#include "uploadstatus.h"

#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QSqlQuery>
#include <QStringList>
#include <QThread>
#include <QVariant>

#include <utility>

namespace {

Q_LOGGING_CATEGORY(uploadStates, "patientmanager.uploadstates")

/// For a literal. UIDs have no quotes, but the index is written by others, too.
QString quoted(QString text)
{
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
}

QString updateOf(const char *table, const QString &status, const QString &condition)
{
    return QStringLiteral("UPDATE `%1` SET `Status`='%2' WHERE %3")
        .arg(QLatin1String(table), status, condition);
}

/// The series of a patient by their states.
struct StateCount
{
    int uploaded = 0;
    int uploading = 0;
    int other = 0;

    void add(const QString &status)
    {
        if (status == UploadStatus::uploaded()) {
            ++uploaded;
        } else if (status == UploadStatus::uploading()) {
            ++uploading;
        } else {
            ++other;
        }
    }
    /// Empty where the patient keeps its own.
    QString patientStatus() const
    {
        if (uploaded == 0 && uploading == 0) {
            return {};
        }
        return uploading == 0 && other == 0 ? UploadStatus::uploaded() : UploadStatus::uploading();
    }
};

} // namespace

UploadStateRefresh::UploadStateRefresh(const QSqlDatabase &db, Stop isStopped)
    : m_db(db)
    , m_isStopped(std::move(isStopped))
{ }

/// The list is read to its end first: a statement left open would keep its view of the index, on which no
/// writing is possible once somebody else has written.
bool UploadStateRefresh::refreshSeries()
{
    const QString statement = QStringLiteral(
        "SELECT SeriesInstanceUID,Status FROM generalseries WHERE Status = '%2' or Status = '%1'")
                                  .arg(UploadStatus::uploading(), UploadStatus::notUploaded());
    qCDebug(uploadStates) << statement;
    QStringList series;
    {
        QSqlQuery query(m_db);
        for (bool good = run(&query, statement); good && query.next();) {
            series.append(query.value(0).toString());
        }
    }
    for (const QString &uid : qAsConst(series)) {
        if (isStopped() || !refreshSeries(uid)) {
            return false;
        }
    }
    return true;
}

bool UploadStateRefresh::refreshSeries(const QString &uid)
{
    qCDebug(uploadStates) << uid;
    QStringList updates;
    {
        QSqlQuery counters(m_db);
        const QString statement =
            QStringLiteral("SELECT recvnum,upCloudnum FROM series WHERE seriesUID = %1");
        for (bool good = run(&counters, statement.arg(quoted(uid))); good && counters.next();) {
            const QString received = counters.value(0).toString();
            const QString uploaded = counters.value(1).toString();
            qCDebug(uploadStates) << received << uploaded;
            const QString condition = QStringLiteral("`SeriesInstanceUID`=") + quoted(uid);
            if (!uploaded.isEmpty()) { // "0" counts, too: the upload has been queued
                const bool isWhole = uploaded == received;
                updates.append(updateOf("generalseries",
                    isWhole ? UploadStatus::uploaded() : UploadStatus::uploading(), condition));
            }
        }
    }
    for (const QString &update : qAsConst(updates)) {
        if (isStopped()) {
            return false;
        }
        write(update);
    }
    return true;
}

bool UploadStateRefresh::refreshPatient(qlonglong pk)
{
    StateCount count;
    {
        QSqlQuery query(m_db);
        const QString statement = QStringLiteral(
            "SELECT generalseries.Status FROM patient inner join generalstudy inner join generalseries WHERE "
            "patient.pk=generalstudy.patient_fk and generalstudy.pk=generalseries.study_fk and "
            "patient.pk=%1 and (patient.Status = '%2' or patient.Status = '%3')");
        const QString ofPatient =
            statement.arg(QString::number(pk), UploadStatus::notUploaded(), UploadStatus::uploading());
        for (bool good = run(&query, ofPatient); good && query.next();) {
            if (isStopped()) {
                return false;
            }
            count.add(query.value(0).toString());
        }
    }
    const QString status = count.patientStatus();
    if (!status.isEmpty()) {
        write(updateOf("patient", status, QStringLiteral("`pk`=%1").arg(pk)));
        write(updateOf("generalstudy", status, QStringLiteral("`patient_fk`=%1").arg(pk)));
    }
    return true;
}

/// Where the connection waits for a lock but briefly, it is asked again, for as long as any other one would
/// wait; its thread may be asked to end in between.
bool UploadStateRefresh::run(QSqlQuery *query, const QString &statement) const
{
    QElapsedTimer waited;
    waited.start();
    query->setForwardOnly(true);
    while (!query->exec(statement)) {
        const ConnectionFailure failure = connectionFailureOf(query->lastError(), m_db.databaseName());
        if (failure.reason != ConnectionFailure::Reason::Locked
            || waited.elapsed() >= IndexConnection::lockWaitMs
            || QThread::currentThread()->isInterruptionRequested()) {
            return false;
        }
    }
    return true;
}

void UploadStateRefresh::write(const QString &statement) const
{
    QSqlQuery query(m_db);
    run(&query, statement);
}
