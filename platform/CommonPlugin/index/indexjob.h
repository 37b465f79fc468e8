#pragma once

#include <QObject>
#include <QVariant>

#include <atomic>
#include <functional>
#include <thread>

/**
 * One piece of work on an index in the background. Made on the GUI thread, which hears of its progress and of
 * its end; the destructor stops the work and waits for it.
 */
class IndexJob : public QObject
{
    Q_OBJECT

public:
    using Progress = std::function<void(double)>;
    using Work = std::function<QVariant(const std::atomic<bool> &stop, const Progress &progress)>;

    /// @param work runs on a thread of its own
    explicit IndexJob(Work work, QObject *parent = nullptr);
    ~IndexJob() override;

    /// Begins; once, when its receivers are connected.
    void start();
    /// Ends the work soon; finished() still comes.
    void stop() { m_stop = true; }

signals:
    /// The share that is done, 0 to 1.
    void progressed(double share);
    /// @param result what the work answered
    void finished(const QVariant &result);

private:
    std::atomic<bool> m_stop{false};
    Work m_work;
    std::thread m_thread;
};
