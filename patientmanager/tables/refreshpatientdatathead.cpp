#include "refreshpatientdatathead.h"

#include "createconnection.h"
#include "indexconnection.h"
#include "uploadstaterefresh.h"

#include <QCoreApplication>
#include <QThread>

namespace {

/// How long one attempt waits for a lock: whoever ends the thread waits no longer.
constexpr int attemptMs = 100;

} // namespace

UploadStatesEvent::UploadStatesEvent()
    : QEvent(eventType())
{ }

QEvent::Type UploadStatesEvent::eventType()
{
    static const int type = registerEventType();
    return Type(type);
}

RefreshPatientDataThead::RefreshPatientDataThead(QObject *listener)
    : m_databasePath(databasePath())
    , m_listener(listener)
{ }

/// Only a run that is still under way is stopped: its end may come at the same moment.
void RefreshPatientDataThead::requestStop()
{
    int running = Running;
    m_state.compare_exchange_strong(running, StopRequested);
}

void RefreshPatientDataThead::refreshPatientUpState(qlonglong patient_pk)
{
    m_state = Running;
    refresh(patient_pk);
    m_state = Idle;
    if (m_listener) {
        QCoreApplication::postEvent(m_listener, new UploadStatesEvent);
    }
}

void RefreshPatientDataThead::refresh(qlonglong patient)
{
    const IndexConnection connection(m_databasePath, attemptMs);
    if (!connection.isOpen()) {
        return;
    }
    const auto isStopped = [this] {
        return m_state == StopRequested || QThread::currentThread()->isInterruptionRequested();
    };
    UploadStateRefresh refresh(connection.database(), isStopped);
    if (refresh.refreshSeries()) {
        refresh.refreshPatient(patient);
    }
}
