#include "sendnotifier.h"

#include <QMetaMethod>
#include <QScopedValueRollback>

#include <algorithm>

SendNotifier *SendNotifier::instance()
{
    static SendNotifier notifier;
    return &notifier;
}

void SendNotifier::taken(const SentJob &job)
{
    m_taken = job.id;
    tell(job);
}

void SendNotifier::tell(const SentJob &job)
{
    if (SentJob *known = find(job.id)) {
        *known = job;
    } else {
        m_jobs.append(job);
    }
    emit changed(job.id);
}

void SendNotifier::setFailureReader(const QObject *host, FailureReader reader)
{
    m_failureHost = host;
    m_failureReader = std::move(reader);
}

void SendNotifier::forget(qint64 job)
{
    const auto isIt = [job](const SentJob &known) { return known.id == job; };
    m_jobs.erase(std::remove_if(m_jobs.begin(), m_jobs.end(), isIt), m_jobs.end());
    emit changed(job);
}

void SendNotifier::forgetAll()
{
    while (!m_jobs.isEmpty()) {
        forget(m_jobs.constLast().id);
    }
}

qint64 SendNotifier::request(const std::function<void()> &emitRequest, const SendLabel &label)
{
    const QScopedValueRollback<bool> requesting(m_isRequesting, true);
    const QScopedValueRollback<SendLabel> labelled(m_label, label);
    m_taken = 0;
    emitRequest();
    return m_taken;
}

SentJob SendNotifier::job(qint64 id) const
{
    const auto isIt = [id](const SentJob &known) { return known.id == id; };
    const auto found = std::find_if(m_jobs.begin(), m_jobs.end(), isIt);
    return found == m_jobs.end() ? SentJob() : *found;
}

QVector<SendFailure> SendNotifier::failures(qint64 job, int first, int count) const
{
    return m_failureHost && m_failureReader ? m_failureReader(job, first, count) : QVector<SendFailure>();
}

bool SendNotifier::canControl() const
{
    return isSignalConnected(QMetaMethod::fromSignal(&SendNotifier::retryRequested));
}

SentJob *SendNotifier::find(qint64 id)
{
    const auto found =
        std::find_if(m_jobs.begin(), m_jobs.end(), [id](const SentJob &known) { return known.id == id; });
    return found == m_jobs.end() ? nullptr : &*found;
}
