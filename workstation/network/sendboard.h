#pragma once

#include "sendstore.h"

#include <QHash>
#include <QSet>

#include <atomic>
#include <mutex>

/// What the workers of a service and their coordinator tell each other. Any thread.
class SendBoard
{
public:
    /// What has happened since it was last asked.
    struct News
    {
        QHash<qint64, int> accepted; ///< by job
        QHash<qint64, QVector<SendObject>> failed;
        bool isEmpty() const { return accepted.isEmpty() && failed.isEmpty(); }
    };

    std::atomic<bool> stop{false};
    std::atomic<bool> anyChange{false}; ///< something in the store is new

    void noteAccepted(qint64 job)
    {
        const std::lock_guard lock(m_mutex);
        ++m_news.accepted[job];
    }
    void noteFailed(const SendObject &object)
    {
        constexpr int most = 1000;
        const std::lock_guard lock(m_mutex);
        QVector<SendObject> &failed = m_news.failed[object.job];
        if (failed.size() < most) {
            failed.append(object);
        }
    }
    News takeNews()
    {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_news, {});
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
    News m_news;
    QHash<qint64, SendHold> m_holds;
};
