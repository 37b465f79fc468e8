#pragma once

#include "patientmanager_export.h"

#include <QEvent>
#include <QObject>
#include <QString>

#include <atomic>

/// The upload states in the index may be others than those that are shown: what a worker tells its form.
class PATIENTMANAGER_EXPORT UploadStatesEvent : public QEvent
{
public:
    UploadStatesEvent();
    static QEvent::Type eventType();
};

/**
 * Brings the upload states of all series that are not uploaded, and then of one patient, up to what has been
 * counted. A worker, not a thread: it lives in one, opens a connection of its own to the index for each run,
 * and has no signals, so it tells its listener by an UploadStatesEvent that a run has ended, however it did.
 */
class PATIENTMANAGER_EXPORT RefreshPatientDataThead : public QObject
{
    Q_OBJECT

public:
    enum State { Idle, Running, StopRequested };

    /// Works on the index that is the default one now. @param listener lives until the worker's thread ended
    explicit RefreshPatientDataThead(QObject *listener = nullptr);

    /// Any thread.
    int state() const { return m_state.load(); }
    /// A run that is under way ends at its next row; without one nothing happens. Any thread.
    void requestStop();

public slots:
    void refreshPatientUpState(qlonglong patient_pk);

private:
    void refresh(qlonglong patient);

    const QString m_databasePath;
    QObject *const m_listener;
    std::atomic<int> m_state{Idle};
};
