#include "indexworkplace.h"

#include "nativehandle.h"

namespace {

/// SQLite's virtual machine asks after this many steps whether to go on: some milliseconds.
constexpr int stepsBetweenLooks = 10'000;
constexpr int busyPauseMs = 20;
constexpr int longestWaitMs = 3000;

int lookAtStop(void *stop)
{
    return static_cast<const std::atomic<bool> *>(stop)->load() ? 1 : 0;
}

int waitForOthers(void *stop, int calls)
{
    if (lookAtStop(stop) != 0 || calls * busyPauseMs >= longestWaitMs) {
        return 0;
    }
    sqlite3_sleep(busyPauseMs);
    return 1;
}

} // namespace

IndexWorkplace::IndexWorkplace(const QString &path, const std::atomic<bool> &stop)
    : m_connection(path)
{
    if (m_connection.isOpen()) {
        m_native = nativeHandle(m_connection.database());
        auto *flag = const_cast<std::atomic<bool> *>(&stop);
        sqlite3_progress_handler(m_native, stepsBetweenLooks, lookAtStop, flag);
        sqlite3_busy_handler(m_native, waitForOthers, flag);
    }
}
