#pragma once

#include <QString>

#include <atomic>
#include <thread>

/// Another program that writes to an index: one image a commit, so many a second, on a thread and a
/// connection of its own, from the constructor until stop().
class SteadyWriter
{
public:
    SteadyWriter(const QString &databasePath, int perSecond);
    ~SteadyWriter();
    SteadyWriter(const SteadyWriter &) = delete;
    SteadyWriter &operator=(const SteadyWriter &) = delete;

    /// Ends it and waits for that; what it has done is known then.
    void stop();
    int written() const { return m_written; }
    /// Statements that the index refused.
    int refused() const { return m_refused; }
    /// The longest that one insert with its commit has taken.
    double longestMs() const { return m_longestMs; }
    double seconds() const { return m_seconds; }

private:
    void write();

    const QString m_databasePath;
    const int m_perSecond;
    std::atomic<bool> m_stopped{false};
    int m_written = 0;
    int m_refused = 0;
    double m_longestMs = 0;
    double m_seconds = 0;
    std::thread m_thread;
};
