#include "indexworkplace.h"

#include "nativehandle.h"
#include "stopflag.h"

namespace {

constexpr int busyPauseMs = 20;
constexpr int longestWaitMs = 3000;

int waitForOthers(void *stop, int calls)
{
    if (StopFlag::isSet(stop) != 0 || calls * busyPauseMs >= longestWaitMs) {
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
        StopFlag::watch(m_native, stop);
        sqlite3_busy_handler(m_native, waitForOthers, StopFlag::argument(stop));
    }
}
