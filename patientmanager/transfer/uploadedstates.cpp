#include "uploadedstates.h"

#include "createconnection.h"
#include "indexconnection.h"
#include "uploadstaterefresh.h"
#include "uploadstatus.h"

#include <QMetaObject>
#include <QSet>
#include <QSqlQuery>
#include <QVariant>

namespace {

constexpr int attemptMs = 100; ///< how long the end of the thread may have to wait for a lock

void addPatientsOf(const QString &series, const QSqlDatabase &db, QSet<qlonglong> *patients)
{
    QSqlQuery query(db);
    query.prepare(QStringLiteral("SELECT generalstudy.patient_fk FROM generalseries JOIN generalstudy ON "
                                 "generalstudy.pk = generalseries.study_fk WHERE SeriesInstanceUID = ?"));
    query.addBindValue(series);
    query.exec();
    while (query.next()) {
        patients->insert(query.value(0).toLongLong());
    }
}

/// Series of which something is stored, or waits to be, and that are not known to be uploaded: also those
/// that were uploaded as files, and not as series.
QStringList begunSeries(const QSqlDatabase &db)
{
    QSqlQuery query(db);
    query.prepare(QStringLiteral("SELECT series.seriesUID FROM series JOIN generalseries ON "
                                 "generalseries.SeriesInstanceUID = series.seriesUID WHERE "
                                 "series.upCloudnum IS NOT NULL AND generalseries.Status <> ?"));
    query.addBindValue(UploadStatus::uploaded());
    query.exec();
    QStringList series;
    while (query.next()) {
        series.append(query.value(0).toString());
    }
    return series;
}

void refreshStates(const QString &databasePath, QStringList seriesUIDs)
{
    const IndexConnection connection(databasePath, attemptMs);
    if (!connection.isOpen()) {
        return;
    }
    UploadStateRefresh refresh(
        connection.database(), [] { return QThread::currentThread()->isInterruptionRequested(); });
    seriesUIDs += begunSeries(connection.database());
    seriesUIDs.removeDuplicates();
    QSet<qlonglong> patients;
    for (const QString &series : qAsConst(seriesUIDs)) {
        if (!refresh.refreshSeries(series)) {
            return;
        }
        addPatientsOf(series, connection.database(), &patients);
    }
    for (const qlonglong patient : qAsConst(patients)) {
        refresh.refreshPatient(patient);
    }
}

} // namespace

UploadedStates::UploadedStates(QObject *parent)
    : QObject(parent)
    , m_worker(new QObject)
{
    m_worker->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
}

UploadedStates::~UploadedStates()
{
    m_thread.requestInterruption();
    m_thread.quit();
    m_thread.wait();
    delete m_worker; // where the thread never ran
}

void UploadedStates::refresh(const QStringList &seriesUIDs)
{
    m_thread.start(); // where it does not run yet
    QMetaObject::invokeMethod(m_worker, [this, path = databasePath(), seriesUIDs] {
        refreshStates(path, seriesUIDs);
        emit refreshed();
    });
}
