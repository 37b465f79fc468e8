#pragma once

#include "importrate.h"
#include "sentjob.h"

#include <QSet>
#include <QVector>

/**
 * The sends that one progress bar stands for: those that run, and those that ended while others of them still
 * ran. Where a host tells of no jobs, the images that it counts. Knows no widgets.
 */
class SendBatch
{
public:
    /// A request of which the host has made no job: counted by count().
    void expect(qint64 images, qint64 elapsedMs);
    void count(qint64 elapsedMs);
    /// The jobs as they stand now.
    void update(const QVector<SentJob> &jobs, qint64 elapsedMs);

    bool isEmpty() const { return m_total == 0; }
    bool isRunning() const { return m_isRunning; }
    qint64 total() const { return m_total; }
    qint64 sent() const { return m_sent; }
    qint64 failed() const { return m_failed; }
    double perSecond() const { return m_rate.filesPerSecond(); }
    /// Destinations, however many sends they have, that cannot be worked with at the moment.
    int away() const { return m_away.size(); }
    /// -1 where that cannot be said, as while a destination is away
    qint64 millisecondsLeft() const
    {
        return away() > 0 ? -1 : m_rate.millisecondsFor(m_total - m_sent - m_failed);
    }

private:
    void addUp(const QVector<SentJob> &jobs, qint64 elapsedMs);

    QSet<qint64> m_jobs;
    QVector<SentJob> m_latest;
    qint64 m_expected = 0; ///< of requests without a job
    qint64 m_counted = 0;
    qint64 m_total = 0;
    qint64 m_sent = 0;
    qint64 m_failed = 0;
    QSet<QString> m_away;
    bool m_isRunning = false;
    ImportRate m_rate;
};
