#pragma once

#include "commonplugin_export.h"
#include "sendlabel.h"
#include "sentjob.h"

#include <QObject>
#include <QPointer>

#include <functional>

/**
 * What the send dialog and its host tell each other beyond the calls that every host knows: which jobs a host
 * has made of a request, how they stand, what failed and why. One for the process; keeps how the jobs stand,
 * so that a dialog that is opened later shows it. GUI thread.
 *
 * A host that does not know it feeds nothing; the dialog then counts by setseriesSuccessCount() alone.
 * A host that does: in its slot for a send request, if isRequesting(), it makes the job and calls taken();
 * from then on tell() whenever the job stands differently (several times a second at most). It gives a reader
 * of what has failed for good, and connects to the signals that ask for something.
 */
class COMMONPLUGIN_EXPORT SendNotifier : public QObject
{
    Q_OBJECT

public:
    static SendNotifier *instance();

    /// @name The host's side
    /// @{
    /// Whether the dialog is asking at this moment: the request comes from it, and not from a forwarding.
    bool isRequesting() const { return m_isRequesting; }
    /// What people know the request that is being made by.
    const SendLabel &label() const { return m_label; }
    /// The request that is being made has become this job.
    void taken(const SentJob &job);
    /// The job stands so now. Also for jobs of an earlier run of the program that go on.
    void tell(const SentJob &job);
    /// Reads part of what has failed of a job, in a fixed order: so many as SentJob::failed says, or fewer
    /// where that has changed.
    using FailureReader = std::function<QVector<SendFailure>(qint64 job, int first, int count)>;
    /// @param host who reads: not asked once it is gone
    void setFailureReader(const QObject *host, FailureReader reader);
    /// The job is no longer known, or another index has other jobs.
    void forget(qint64 job);
    void forgetAll();
    /// @}

    /// @name The dialog's side
    /// @{
    /// Runs what emits a request. @return the job that the host has made of it; 0 where it told none
    qint64 request(const std::function<void()> &emitRequest, const SendLabel &label = {});
    /// In the order of their first mention.
    const QVector<SentJob> &jobs() const { return m_jobs; }
    /// The job with this id; one without id where there is none.
    SentJob job(qint64 id) const;
    QVector<SendFailure> failures(qint64 job, int first, int count) const;
    /// Whether a host will act on what is asked for here.
    bool canControl() const;
    /// @}

signals:
    /// A job has come, stands differently, or is gone.
    void changed(qint64 job);
    /// The user wants what failed to be tried again.
    void retryRequested(qint64 job);
    /// The user wants no more of this job to be sent.
    void cancelRequested(qint64 job);

private:
    SentJob *find(qint64 id);

    bool m_isRequesting = false;
    qint64 m_taken = 0;
    SendLabel m_label; ///< while a request is made
    QVector<SentJob> m_jobs;
    QPointer<const QObject> m_failureHost;
    FailureReader m_failureReader;
};
