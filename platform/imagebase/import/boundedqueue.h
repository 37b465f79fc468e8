#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>

/// A queue between threads that holds a limited number of items: push() waits while it is full, pop() while
/// empty.
template <typename Item>
class BoundedQueue
{
public:
    explicit BoundedQueue(std::size_t limit)
        : m_limit(limit)
    { }

    /// @return false where the queue was aborted: the item is dropped
    bool push(Item item)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_aborted || m_items.size() < m_limit; });
        if (m_aborted) {
            return false;
        }
        m_items.push_back(std::move(item));
        m_changed.notify_all();
        return true;
    }

    /// @return nothing where the queue was aborted, or closed and emptied
    std::optional<Item> pop()
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_aborted || m_closed || !m_items.empty(); });
        if (m_aborted || m_items.empty()) {
            return std::nullopt;
        }
        Item item = std::move(m_items.front());
        m_items.pop_front();
        m_changed.notify_all();
        return item;
    }

    /// No more items will come.
    void close() { set(&BoundedQueue::m_closed); }
    /// Wakes every thread that waits; what is in the queue is no longer handed out.
    void abort() { set(&BoundedQueue::m_aborted); }

private:
    void set(bool BoundedQueue::*flag)
    {
        const std::lock_guard lock(m_mutex);
        this->*flag = true;
        m_changed.notify_all();
    }

    const std::size_t m_limit;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Item> m_items;
    bool m_closed = false;
    bool m_aborted = false;
};
