#pragma once

#include "sentjob.h"

#include <QObject>

class PatientManagerMainWindow;
class SendService;

/**
 * Has sent what the library asks for, and tells the send dialog how its jobs stand. A request is the dialog's
 * while the dialog says that it is asking, and a forwarding otherwise.
 *
 * notifyInstanceSent() comes once for each object of the dialog's jobs that a peer has accepted: of those
 * that were asked for in this run of the program, since the dialog counts nothing else. Owned by the window;
 * GUI thread.
 */
class SendController : public QObject
{
    Q_OBJECT

public:
    /// @param service outlives the window
    SendController(PatientManagerMainWindow *library, SendService *service, QObject *parent);

private:
    void send(const QStringList &files, const QString &aeTitle, const QString &host, int port);
    void tellJobs();
    void tellAccepted(qint64 job, int count);
    QVector<SendFailure> failures(qint64 job, int first, int count) const;

    PatientManagerMainWindow *const m_library;
    SendService *const m_service;
};
