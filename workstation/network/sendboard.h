#pragma once

#include "sendjob.h"

#include <QHash>

#include <atomic>
#include <mutex>

/// What the workers of a service and their coordinator tell each other. Any thread.
class SendBoard
{
public:
    std::atomic<bool> stop{false};
    std::atomic<bool> anyChange{false}; ///< something in the store is new

    void noteAccepted(qint64 job)
    {
        const std::lock_guard lock(m_mutex);
        ++m_accepted[job];
    }
    /// How many more were accepted, by job, since it was last asked.
    QHash<qint64, int> takeAccepted()
    {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_accepted, {});
    }
    /// The store refuses.
    void noteProblem(const QString &problem)
    {
        const std::lock_guard lock(m_mutex);
        m_problem = problem;
    }
    /// The last one since it was last asked.
    QString takeProblem()
    {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_problem, {});
    }
    void setHolds(QHash<qint64, SendHold> holds)
    {
        const std::lock_guard lock(m_mutex);
        m_holds = std::move(holds);
    }
    bool isHeld(qint64 job) const
    {
        const std::lock_guard lock(m_mutex);
        return m_holds.value(job, SendHold::None) != SendHold::None;
    }

private:
    mutable std::mutex m_mutex;
    QHash<qint64, int> m_accepted;
    QString m_problem;
    QHash<qint64, SendHold> m_holds;
};
