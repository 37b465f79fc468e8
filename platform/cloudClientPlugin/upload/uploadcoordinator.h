#pragma once

#include "cloudsession.h"
#include "uploadorder.h"
#include "uploadtally.h"

#include <QObject>

/// Sends what the index says that waits. Lives on a thread of its own.
class UploadCoordinator : public QObject
{
    Q_OBJECT

public:
    UploadCoordinator(QString databasePath, CloudSession session);

    void start() { }
    void setSession(const CloudSession &session) { m_session = session; }
    void add(const UploadOrder &order);
    void finish(qint64 task) { emit ended(task); }
    void flag(qint64 /*task*/) { }
    void retryFailed(qint64 /*task*/) { }
    void rename(qint64 /*task*/, const QString & /*patientName*/) { }

signals:
    void tallied(qint64 task, const UploadTally &tally);
    void runEnded(qint64 task);
    void ended(qint64 task);
    void sessionRefused();

private:
    const QString m_databasePath;
    CloudSession m_session;
};
