#include "importrate.h"

namespace {
constexpr qint64 windowMs = 5000;
} // namespace

void ImportRate::add(qint64 elapsedMs, qint64 done)
{
    m_samples.enqueue({elapsedMs, done});
    // One sample from before the window stays, so that the window is covered.
    while (m_samples.size() > 2 && m_samples.at(1).first <= elapsedMs - windowMs) {
        m_samples.dequeue();
    }
}

double ImportRate::filesPerSecond() const
{
    if (m_samples.isEmpty()) {
        return 0;
    }
    const qint64 milliseconds = m_samples.last().first - m_samples.first().first;
    const qint64 files = m_samples.last().second - m_samples.first().second;
    return milliseconds > 0 ? 1000.0 * double(files) / double(milliseconds) : 0;
}

qint64 ImportRate::millisecondsFor(qint64 files) const
{
    const double rate = filesPerSecond();
    return rate > 0 ? qint64(1000.0 * double(files) / rate) : -1;
}
