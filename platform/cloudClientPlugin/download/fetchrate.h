#pragma once

#include <QtGlobal>

#include <deque>

/// How fast something comes, over the last seconds.
class FetchRate
{
public:
    void add(qint64 nowMs, qint64 bytes, qint64 objects)
    {
        if (!m_samples.empty() && nowMs - m_samples.back().ms < sampleMs) {
            m_samples.back().bytes += bytes;
            m_samples.back().objects += objects;
        } else {
            m_samples.push_back({nowMs, bytes, objects});
        }
        while (nowMs - m_samples.front().ms > windowMs) {
            m_samples.pop_front();
        }
    }
    double bytesPerSecond(qint64 nowMs) const { return perSecond(nowMs, &Sample::bytes); }
    double objectsPerSecond(qint64 nowMs) const { return perSecond(nowMs, &Sample::objects); }

private:
    static constexpr qint64 windowMs = 4000;
    static constexpr qint64 sampleMs = 100;
    static constexpr double msPerSecond = 1000;

    struct Sample
    {
        qint64 ms;
        qint64 bytes;
        qint64 objects;
    };

    double perSecond(qint64 nowMs, qint64 Sample::*amount) const
    {
        qint64 sum = 0;
        qint64 first = nowMs;
        for (const Sample &sample : m_samples) {
            if (nowMs - sample.ms <= windowMs) {
                sum += sample.*amount;
                first = qMin(first, sample.ms);
            }
        }
        return double(sum) * msPerSecond / double(qMax<qint64>(nowMs - first, sampleMs));
    }

    std::deque<Sample> m_samples;
};
