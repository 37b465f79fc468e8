#pragma once

#include "uploadjobs.h"
#include "uploadrecords.h"
#include "uploadsender.h"
#include "uploadsituation.h"
#include "uploadstanding.h"

/**
 * Carries out what is asked for, brings together those who do it, and tells how the uploads stand. Of all
 * programs with the same index one sends; the others tell what it does. Lives on a thread of its own.
 */
class UploadCoordinator : public QObject
{
    Q_OBJECT

public:
    UploadCoordinator(const QString &databasePath, CloudSession session);

    /// @name For its thread
    /// @{
    void start();
    void setSession(const CloudSession &session);
    void add(const UploadOrder &order);
    void finish(qint64 task);
    void flag(qint64 task);
    void retryFailed(qint64 task);
    /// What waits for a service in trouble waits no longer.
    void tryNow();
    void rename(qint64 task, const QString &patientName);
    /// Tells the tally, for somebody who has not heard it.
    void tellAgain(qint64 task);
    /// @}

signals:
    void tallied(qint64 task, const UploadTally &tally);
    void runEnded(qint64 task);
    void ended(qint64 task);
    void sessionRefused();

private:
    using Job = UploadJobs::Job;

    void connectRecords();
    void connectJobs();
    void look();
    void tell(UploadJob &job);
    void tellChanged();

    UploadSituation m_situation;
    UploadRecords m_records;
    UploadJobs m_jobs;
    UploadSender m_sender;
    UploadStanding m_standing;
    QTimer m_lookTimer;
};
