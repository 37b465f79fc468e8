#include "uploadpace.h"

#include <algorithm>
#include <array>
#include <cmath>

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

/// How many objects of the usual size a request has at a step of bytes.
int UploadPace::objectsAt(int step) const
{
    const auto at = static_cast<std::size_t>(step);
    const double fitting = m_objectBytes > 0 ? std::ceil(double(byteSteps.at(at)) / m_objectBytes) : step + 1;
    return static_cast<int>(std::min<double>(objectSteps.at(at), fitting));
}

bool UploadPace::apply(int move)
{
    const bool isOfRequests = move == MoreRequests || move == FewerRequests;
    const int way = move == MoreRequests || move == MoreBytes ? 1 : -1;
    int &at = isOfRequests ? m_requestsAt : m_bytesAt;
    const int most = static_cast<int>(isOfRequests ? requestSteps.size() : byteSteps.size()) - 1;
    int next = at + way;
    // Of large objects there is one in a request at several steps: nothing could be learnt there.
    while (!isOfRequests && next > 0 && next < most && objectsAt(next) == objectsAt(at)) {
        next += way;
    }
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
    constexpr double weight = 0.2;
    const double size = double(bytes) / objects;
    m_objectBytes = m_objectBytes > 0 ? m_objectBytes + weight * (size - m_objectBytes) : size;
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
