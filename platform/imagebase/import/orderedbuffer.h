#pragma once

#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>

/// Gives items that several threads finish in any order back in the order of their numbers, counted from 0.
/// put() waits while its item is too far ahead of the one that is due, so that memory stays bounded.
template <typename Item>
class OrderedBuffer
{
public:
    explicit OrderedBuffer(std::size_t window)
        : m_window(window)
    { }

    /// @return false where the buffer was aborted: the item is left with the caller
    bool put(std::size_t number, Item &item)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [&] { return m_aborted || number < m_next + m_window; });
        if (m_aborted) {
            return false;
        }
        m_items.emplace(number, std::move(item));
        m_changed.notify_all();
        return true;
    }

    /// Waits for the item that is due. @return nothing after the last item, where aborted, or when the time
    /// is over
    template <typename Duration>
    std::optional<Item> take(Duration patience)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(
            lock, patience, [this] { return m_aborted || ended() || m_items.count(m_next) > 0; });
        const auto due = m_items.find(m_next);
        if (m_aborted || due == m_items.end()) {
            return std::nullopt;
        }
        Item item = std::move(due->second);
        m_items.erase(due);
        ++m_next;
        m_changed.notify_all();
        return item;
    }

    /// True once every item up to the announced end was taken.
    bool isDone()
    {
        const std::lock_guard lock(m_mutex);
        return ended();
    }

    /// Announces how many items there are in all.
    void setEnd(std::size_t count)
    {
        const std::lock_guard lock(m_mutex);
        m_end = count;
        m_changed.notify_all();
    }

    void abort()
    {
        const std::lock_guard lock(m_mutex);
        m_aborted = true;
        m_changed.notify_all();
    }

    /// After abort() and the end of all other threads: what nobody took.
    std::map<std::size_t, Item> leftOver() { return std::move(m_items); }

private:
    bool ended() const { return m_end && m_next >= *m_end; }

    const std::size_t m_window;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::map<std::size_t, Item> m_items;
    std::size_t m_next = 0;
    std::optional<std::size_t> m_end;
    bool m_aborted = false;
};
