#pragma once

#include "webfailure.h"

/// How long to keep away from a service that is in trouble: pauses that double. Knows no clock.
class UploadTrouble
{
public:
    static constexpr int firstPauseMs = 1000;
    static constexpr int longestPauseMs = 60000;

    bool isNone() const { return m_pauseMs == 0; }
    const WebFailure &failure() const { return m_failure; }
    bool mustWait(qint64 nowMs) const { return nowMs < m_untilMs; }
    qint64 untilMs() const { return m_untilMs; }

    /// Requests that were on their way when it began make it no worse.
    void note(const WebFailure &failure, qint64 nowMs)
    {
        m_failure = failure;
        if (!mustWait(nowMs)) {
            m_pauseMs = m_pauseMs == 0 ? firstPauseMs : qMin(2 * m_pauseMs, longestPauseMs);
            m_untilMs = nowMs + m_pauseMs;
        }
    }
    void clear() { *this = UploadTrouble(); }
    /// Somebody has reason to believe that it is over: pauses are short again.
    void hurry()
    {
        m_pauseMs = qMin(m_pauseMs, firstPauseMs);
        m_untilMs = 0;
    }
    /// How long a file is left alone after so many tries.
    static qint64 pauseAfter(int tries) { return qMin(firstPauseMs << qMin(tries, 6), longestPauseMs); }

private:
    WebFailure m_failure;
    int m_pauseMs = 0;
    qint64 m_untilMs = 0;
};
