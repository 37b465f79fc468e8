#include "sendbatch.h"

#include <algorithm>

void SendBatch::expect(qint64 images, qint64 elapsedMs)
{
    if (m_counted >= m_expected) { // what was asked for before is done
        m_expected = 0;
        m_counted = 0;
    }
    m_expected += images;
    addUp(m_latest, elapsedMs);
}

void SendBatch::count(qint64 elapsedMs)
{
    if (m_counted < m_expected) {
        ++m_counted;
        addUp(m_latest, elapsedMs);
    }
}

void SendBatch::update(const QVector<SentJob> &jobs, qint64 elapsedMs)
{
    const auto runs = [](const SentJob &job) { return !job.isOver(); };
    const auto runsAmongOurs = [this, &runs](
                                   const SentJob &job) { return m_jobs.contains(job.id) && runs(job); };
    const bool wentOn = std::any_of(jobs.begin(), jobs.end(), runsAmongOurs);
    if (!wentOn && std::any_of(jobs.begin(), jobs.end(), runs)) {
        m_jobs.clear();
    }
    for (const SentJob &job : jobs) {
        if (runs(job)) {
            m_jobs.insert(job.id);
        }
    }
    m_latest = jobs;
    addUp(jobs, elapsedMs);
}

void SendBatch::addUp(const QVector<SentJob> &jobs, qint64 elapsedMs)
{
    const qint64 before = m_sent + m_failed;
    const bool ran = m_isRunning;
    m_total = m_expected;
    m_sent = m_counted;
    m_failed = 0;
    m_away.clear();
    m_isRunning = m_counted < m_expected;
    for (const SentJob &job : jobs) {
        if (m_jobs.contains(job.id)) {
            m_total += job.total;
            m_sent += job.accepted;
            m_failed += job.failed;
            if (job.isAway && !job.isOver()) {
                m_away.insert(job.destination);
            }
            m_isRunning = m_isRunning || !job.isOver();
        }
    }
    if (!ran || m_sent + m_failed < before) {
        m_rate.clear(); // another batch, or failures that are tried again
    }
    m_rate.add(elapsedMs, m_sent + m_failed);
}
