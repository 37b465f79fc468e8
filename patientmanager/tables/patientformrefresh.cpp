// The patient form's workers: how a click hands them a patient, and how they end.
#include "patientform.h"

#include "pagedtablemodel.h"
#include "refreshpatientdatathead.h"
#include "uploadstaterefresh.h"

#include <QPointer>
#include <QSqlDatabase>
#include <QThread>

#include <algorithm>

void PatientForm::selectIndex(const QModelIndex &index)
{
    if (!m_threadsCreated) {
        createWorkers();
    }
    stopRefreshes();
    const qlonglong clicked = model()->key(index.row());
    RecordForm::selectIndex(index);
    startRefresh(clicked);
}

void PatientForm::createWorkers()
{
    for (int i = 0; i < workerCount; ++i) {
        auto *thread = new QThread;
        auto *worker = new RefreshPatientDataThead(this);
        worker->moveToThread(thread);
        m_threads.append(thread);
        m_workers.append(worker);
    }
    m_threadsCreated = true;
}

/// What earlier clicks have begun leaves off at its next row.
void PatientForm::stopRefreshes()
{
    for (RefreshPatientDataThead *worker : qAsConst(m_workers)) {
        worker->requestStop();
    }
}

int PatientForm::refreshCount() const
{
    return int(std::count_if(m_workers.cbegin(), m_workers.cend(),
        [](const auto *worker) { return worker->state() != RefreshPatientDataThead::Idle; }));
}

/// With all workers busy the click starts nothing.
void PatientForm::startRefresh(qlonglong pk)
{
    const auto idle = std::find_if(m_workers.cbegin(), m_workers.cend(),
        [](const auto *worker) { return worker->state() == RefreshPatientDataThead::Idle; });
    if (idle == m_workers.cend()) {
        return;
    }
    QThread *thread = m_threads.at(int(idle - m_workers.cbegin()));
    connect(thread, &QThread::finished, *idle, &QObject::deleteLater, Qt::UniqueConnection);
    connect(this, &PatientForm::refrshData, *idle, &RefreshPatientDataThead::refreshPatientUpState,
        Qt::QueuedConnection);
    thread->start(QThread::InheritPriority);
    emit refrshData(pk);
    disconnect(this, &PatientForm::refrshData, *idle, &RefreshPatientDataThead::refreshPatientUpState);
}

/// The workers may not outlive whom they tell. The next click makes new ones.
void PatientForm::endWorkers()
{
    stopRefreshes();
    const QVector<QPointer<QObject>> alive(m_workers.cbegin(), m_workers.cend());
    for (QThread *thread : qAsConst(m_threads)) {
        thread->requestInterruption();
        thread->quit();
    }
    for (QThread *thread : qAsConst(m_threads)) {
        thread->wait();
        delete thread;
    }
    for (const QPointer<QObject> &worker : alive) {
        delete worker; // whose thread was never started
    }
    m_threads.clear();
    m_workers.clear();
    m_threadsCreated = false;
}

bool PatientForm::event(QEvent *event)
{
    if (event->type() == UploadStatesEvent::eventType()) {
        readUploadStates();
        emit uploadStatesRefreshed();
        return true;
    }
    return RecordForm::event(event);
}

void PatientForm::refreshDateBaseState()
{
    UploadStateRefresh(QSqlDatabase::database()).refreshSeries();
}
