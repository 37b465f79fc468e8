#pragma once

#include "cloudsession.h"
#include "queueownership.h"
#include "uploadhealth.h"
#include "uploadjob.h"
#include "uploadlines.h"
#include "uploadrecords.h"
#include "uploadsource.h"

#include <QElapsedTimer>
#include <QMap>

/**
 * Sends what the index says that waits: decides what goes into which request, keeps away from a service in
 * trouble, has outcomes recorded and tells how the uploads stand. Of all programs with the same index one
 * sends; the others tell what it does. Lives on a thread of its own.
 */
class UploadCoordinator : public QObject
{
    Q_OBJECT

public:
    UploadCoordinator(QString databasePath, CloudSession session);

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
    using Job = std::shared_ptr<UploadJob>;

    void look();
    void takeRows(const QVector<UploadRow> &rows);
    void onRecorded(const QVector<UploadOutcome> &outcomes);
    void remove(qint64 task);

    void sendOn();
    bool maySend() const;
    bool isRunnable(const UploadJob &job) const;
    UploadBatch nextBatch();

    void onCame(const UploadBatch &batch, const StoreAnswer &answer);
    void settle(UploadJob &job, QueuedFile file, const UploadJudge::Judgement &judgement, bool wasAlone);
    void record(UploadJob &job, const QueuedFile &file, const UploadJudge::Judgement &judgement);
    void refuseSession();

    void noteChange();
    void tell(UploadJob &job);
    void tellChanged();
    UploadTally::State stateOf(const UploadJob &job) const;
    qint64 nextTryMs(const UploadJob &job) const;
    void endIfOver(const Job &job);
    void end(qint64 task);

    const QString m_databasePath;
    CloudSession m_session;
    bool m_isSessionRefused = false;
    QueueOwnership m_ownership;
    bool m_isOwner = false;
    UploadSource m_source;
    QMap<qint64, Job> m_jobs; ///< the oldest first
    QSet<qint64> m_leaving; ///< that the index has not let go yet
    UploadLines m_lines;
    UploadHealth m_health;
    QElapsedTimer m_clock;
    QTimer m_lookTimer;
    UploadRecords m_records;
};
