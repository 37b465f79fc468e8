#include "uploadpace.h"

#include <array>

namespace {

constexpr qint64 kib = 1024;
constexpr std::array requestSteps{1, 2, 3, 4, 6, 8};
constexpr std::array<qint64, 6> byteSteps{1, 32 * kib, 128 * kib, 512 * kib, 2048 * kib, 6144 * kib};
constexpr std::array objectSteps{1, 10, 25, 50, 100, 100};
constexpr double objectWorth = 64 * kib;
constexpr qint64 windowMs = 400;
constexpr double gain = 1.04; ///< less may be chance
constexpr double loss = 0.85; ///< the service has become slower: what was best is asked anew
constexpr qint64 firstRestMs = 3000;
constexpr qint64 longestRestMs = 60000;

} // namespace

int UploadPace::requests() const
{
    return requestSteps.at(static_cast<std::size_t>(m_requestsAt));
}

qint64 UploadPace::batchBytes() const
{
    return byteSteps.at(static_cast<std::size_t>(m_bytesAt));
}

int UploadPace::batchObjects() const
{
    return objectSteps.at(static_cast<std::size_t>(m_bytesAt));
}

bool UploadPace::apply(int move)
{
    int &at = move == MoreRequests || move == FewerRequests ? m_requestsAt : m_bytesAt;
    const int most = static_cast<int>(&at == &m_requestsAt ? requestSteps.size() : byteSteps.size()) - 1;
    const int next = at + (move == MoreRequests || move == MoreBytes ? 1 : -1);
    if (next < 0 || next > most) {
        return false;
    }
    at = next;
    return true;
}

void UploadPace::startWindow()
{
    m_left = requestSteps.at(static_cast<std::size_t>(qMax(m_requestsAt, m_triedRequestsAt)));
    m_score = 0;
    m_counted = 0;
}

void UploadPace::acknowledged(qint64 bytes, int objects, qint64 nowMs)
{
    if (m_left == windowUnset) {
        startWindow();
    }
    if (m_left > 0) {
        --m_left;
        m_beganMs = nowMs;
        return;
    }
    m_score += double(bytes) + objects * objectWorth;
    ++m_counted;
    const qint64 took = nowMs - m_beganMs;
    if (took >= windowMs && m_counted >= 2 * requests()) {
        judge(m_score / double(took), nowMs);
        startWindow();
    }
}

void UploadPace::judge(double rate, qint64 nowMs)
{
    if (!m_isTrying) {
        const bool isWorse = rate < m_best * loss;
        m_best = rate;
        if (isWorse) {
            m_restMs = 0;
        }
        if (isWorse || nowMs >= m_restUntilMs) {
            tryNext(nowMs);
        }
        return;
    }
    m_isTrying = false;
    if (rate > m_best * gain) {
        m_best = rate;
        m_failedMoves = 0;
        m_restMs = 0;
    } else {
        m_requestsAt = m_triedRequestsAt;
        m_bytesAt = m_triedBytesAt;
        m_move = (m_move + 1) % Moves;
        ++m_failedMoves;
    }
    tryNext(nowMs);
}

void UploadPace::tryNext(qint64 nowMs)
{
    m_triedRequestsAt = m_requestsAt;
    m_triedBytesAt = m_bytesAt;
    while (m_failedMoves < Moves) {
        if (apply(m_move)) {
            m_isTrying = true;
            return;
        }
        m_move = (m_move + 1) % Moves;
        ++m_failedMoves;
    }
    m_failedMoves = 0;
    m_restMs = qBound(firstRestMs, 2 * m_restMs, longestRestMs);
    m_restUntilMs = nowMs + m_restMs;
}
