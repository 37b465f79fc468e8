#pragma once

#include "dicomreader.h"

#include <QByteArray>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>

/// An object of the spool that waits for its record.
struct SpoolItem
{
    QByteArray path;
    std::unique_ptr<DicomReadResult> result; ///< null where it is still to be read
    std::chrono::milliseconds apartFor{0}; ///< how long it stood apart last; 0 for never
};

using SpoolItems = std::deque<SpoolItem>;

/**
 * What waits in a spool for the index, in the order of its coming. One thread takes items and tells what
 * became of them; add(), stop() and the numbers are for any.
 *
 * An item that cannot be written now stands apart for a time of its own, which doubles, and holds up no
 * other.
 */
class SpoolQueue
{
public:
    /// @param result what its reader found, or null; kept only where not too many are
    void add(const QByteArray &path, const DicomReadResult *result);
    /// Waits for items, gathers those that follow closely, and gives them out; none after stop(), or when
    /// none came for a while.
    SpoolItems take();

    /// What became of items that were taken. They go back before all others, in their order,
    void putBack(SpoolItems items);
    /// or apart,
    void setApart(SpoolItem item);
    /// or are done with.
    void finish(std::size_t items);

    /// Items that are not done with.
    int waiting() const;
    bool hasApart() const;

    void stop();
    const std::atomic<bool> &isStopped() const { return m_stopped; }
    /// Sleeps, unless or until it is stopped.
    void pause(std::chrono::milliseconds time);

private:
    using Clock = std::chrono::steady_clock;

    bool waitForOne(std::unique_lock<std::mutex> &lock);
    void gather(std::unique_lock<std::mutex> &lock);
    void recall();

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    SpoolItems m_queue;
    std::multimap<Clock::time_point, SpoolItem> m_apart; ///< by when they are due
    std::size_t m_taken = 0; ///< given out, and nothing said of them yet
    std::atomic<bool> m_stopped{false};
};
