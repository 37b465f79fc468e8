#pragma once

#include "cloudsession.h"
#include "queueownership.h"
#include "uploadjob.h"
#include "uploadjudge.h"
#include "uploadlines.h"
#include "uploadpace.h"
#include "uploadrecorder.h"
#include "uploadtrouble.h"

#include <QElapsedTimer>
#include <QMap>
#include <QThread>

/**
 * Sends what the index says that waits: decides what goes into which request, keeps away from a service in
 * trouble, has outcomes recorded and tells how the uploads stand. Of all programs with the same index one
 * sends; the others tell what it does. Lives on a thread of its own; the destructor ends its recorder's.
 */
class UploadCoordinator : public QObject
{
    Q_OBJECT

public:
    UploadCoordinator(QString databasePath, CloudSession session);
    ~UploadCoordinator() override;

    /// @name For its thread
    /// @{
    void start();
    void setSession(const CloudSession &session);
    void add(const UploadOrder &order);
    void finish(qint64 task);
    void flag(qint64 task);
    void retryFailed(qint64 task);
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
    void write(const UploadRecorder::Write &order, const std::function<void()> &then = {});
    void onWritten(qint64 ticket, const QVector<UploadRow> &rows);
    void takeRows(const QVector<UploadRow> &rows);

    void sendOn();
    bool maySend() const;
    bool isRunnable(const UploadJob &job) const;
    UploadBatch nextBatch();
    UploadBatch batchOf(UploadJob &job);
    bool prepare(UploadJob &job, QueuedFile *file);

    void onCame(const UploadBatch &batch, const StoreAnswer &answer);
    void noteAcknowledged(const UploadBatch &batch, const StoreAnswer &answer);
    void noteFailure(const UploadBatch &batch, const WebFailure &failure);
    bool wasHealthyAt(qint64 ms) const;
    void settle(UploadJob &job, QueuedFile file, const UploadJudge::Judgement &judgement, bool wasAlone);
    void lookAgain(QueuedFile *file, UploadJudge::Judgement *judgement);
    void record(UploadJob &job, const QueuedFile &file, const UploadJudge::Judgement &judgement);
    void flush();
    void refuseSession();

    void tell(UploadJob &job);
    void tellChanged();
    UploadTally::State stateOf(const UploadJob &job) const;
    void endIfOver(const Job &job);
    void end(qint64 task);

    const QString m_databasePath;
    CloudSession m_session;
    bool m_isSessionRefused = false;
    QueueOwnership m_ownership;
    bool m_isOwner = false;
    bool m_isIndexRefusing = false;
    UploadStore m_store; ///< for reading
    QMap<qint64, Job> m_jobs; ///< the oldest first
    UploadLines m_lines;
    UploadPace m_pace;
    UploadTrouble m_trouble;
    UploadLook m_look;
    quint64 m_acknowledgements = 0;
    qint64 m_acknowledgedMs = 0; ///< when the last one came
    QVector<UploadOutcome> m_outcomes; ///< that the recorder has not got yet
    int m_unrecorded = 0; ///< with those that it has
    QHash<qint64, std::function<void()>> m_thens;
    qint64 m_ticket = 0;
    QElapsedTimer m_clock;
    QTimer m_flushTimer;
    QTimer m_lookTimer;
    QThread m_recorderThread;
    UploadRecorder *m_recorder; ///< lives on its thread, which deletes it
};
