#pragma once

#include <QtGlobal>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>

/// How many bytes of archives are unpacked and have not come to their place yet. Any thread.
class UnpackedAhead
{
public:
    void add(qint64 bytes)
    {
        const std::lock_guard lock(m_mutex);
        m_bytes += bytes;
        m_changed.notify_all();
    }

    /// Waits until there are fewer than that. @param stop ends it early when it becomes true
    void waitBelow(qint64 bytes, const std::atomic<bool> &stop)
    {
        constexpr std::chrono::milliseconds look(50);
        std::unique_lock lock(m_mutex);
        while (!stop && m_bytes >= bytes) {
            m_changed.wait_for(lock, look);
        }
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    qint64 m_bytes = 0;
};
