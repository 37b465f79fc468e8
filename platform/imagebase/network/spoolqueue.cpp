#include "spoolqueue.h"

#include <algorithm>
#include <iterator>

namespace {

using namespace std::chrono_literals;

constexpr std::size_t mostHeaders = 20'000; ///< those of further objects are read again
constexpr std::size_t mostAtOnce = 500;
/// A batch costs some waits for the disk, whatever is in it, and those who send wait for the same disk.
constexpr auto longestGathering = 250ms;
constexpr auto followsClosely = 80ms;
constexpr auto longestWait = 1000ms;
constexpr auto firstApart = 1000ms;
constexpr auto longestApart = 8000ms;

} // namespace

void SpoolQueue::add(const QByteArray &path, const DicomReadResult *result)
{
    {
        const std::lock_guard lock(m_mutex);
        const bool keepsHeader = result && m_queue.size() + m_apart.size() < mostHeaders;
        m_queue.push_back({path, keepsHeader ? std::make_unique<DicomReadResult>(*result) : nullptr});
    }
    m_changed.notify_one();
}

SpoolItems SpoolQueue::take()
{
    std::unique_lock lock(m_mutex);
    if (!waitForOne(lock)) {
        return {};
    }
    gather(lock);
    if (m_stopped) {
        return {};
    }
    const auto number = static_cast<std::ptrdiff_t>(std::min(m_queue.size(), mostAtOnce));
    SpoolItems items(
        std::make_move_iterator(m_queue.begin()), std::make_move_iterator(m_queue.begin() + number));
    m_queue.erase(m_queue.begin(), m_queue.begin() + number);
    m_taken += items.size();
    return items;
}

bool SpoolQueue::waitForOne(std::unique_lock<std::mutex> &lock)
{
    auto until = Clock::now() + longestWait;
    if (!m_apart.empty()) {
        until = std::min(until, m_apart.begin()->first);
    }
    m_changed.wait_until(lock, until, [this] { return m_stopped || !m_queue.empty(); });
    recall();
    return !m_stopped && !m_queue.empty();
}

/// Until nothing has come for a moment.
void SpoolQueue::gather(std::unique_lock<std::mutex> &lock)
{
    const auto end = Clock::now() + longestGathering;
    for (std::size_t before = 0; before != m_queue.size() && before < mostAtOnce && !m_stopped;) {
        before = m_queue.size();
        m_changed.wait_until(lock, std::min(end, Clock::now() + followsClosely),
            [this, before] { return m_stopped || m_queue.size() != before; });
    }
}

/// Those whose time apart is over wait with the others.
void SpoolQueue::recall()
{
    const auto due = m_apart.upper_bound(Clock::now());
    for (auto item = m_apart.begin(); item != due; ++item) {
        m_queue.push_back(std::move(item->second));
    }
    m_apart.erase(m_apart.begin(), due);
}

void SpoolQueue::putBack(SpoolItems items)
{
    const std::lock_guard lock(m_mutex);
    m_taken -= items.size();
    m_queue.insert(
        m_queue.begin(), std::make_move_iterator(items.begin()), std::make_move_iterator(items.end()));
}

void SpoolQueue::setApart(SpoolItem item)
{
    item.apartFor = std::clamp<std::chrono::milliseconds>(2 * item.apartFor, firstApart, longestApart);
    const std::lock_guard lock(m_mutex);
    --m_taken;
    m_apart.emplace(Clock::now() + item.apartFor, std::move(item));
}

void SpoolQueue::finish(std::size_t items)
{
    const std::lock_guard lock(m_mutex);
    m_taken -= items;
}

int SpoolQueue::waiting() const
{
    const std::lock_guard lock(m_mutex);
    return static_cast<int>(m_queue.size() + m_apart.size() + m_taken);
}

bool SpoolQueue::hasApart() const
{
    const std::lock_guard lock(m_mutex);
    return !m_apart.empty();
}

void SpoolQueue::stop()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopped = true;
    }
    m_changed.notify_all();
}

void SpoolQueue::pause(std::chrono::milliseconds time)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, time, [this] { return m_stopped.load(); });
}
