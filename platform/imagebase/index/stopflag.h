#pragma once

#include <sqlite3.h>

#include <atomic>

/// Lets whoever sets a flag end the statements of a connection: SQLite asks for it every few milliseconds.
namespace StopFlag {

/// Of SQLite's virtual machine.
constexpr int stepsBetweenLooks = 10'000;

/// In the form that SQLite calls its handlers in. @param flag a std::atomic<bool>
inline int isSet(void *flag)
{
    return static_cast<const std::atomic<bool> *>(flag)->load() ? 1 : 0;
}

/// As handlers want it. They only look at it.
inline void *argument(const std::atomic<bool> &flag)
{
    return const_cast<std::atomic<bool> *>(&flag);
}

/// @param flag outlives the connection's work
inline void watch(sqlite3 *native, const std::atomic<bool> &flag)
{
    sqlite3_progress_handler(native, stepsBetweenLooks, isSet, argument(flag));
}

} // namespace StopFlag
