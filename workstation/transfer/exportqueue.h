#pragma once

#include "exporter.h"

#include <QObject>

#include <memory>
#include <thread>
#include <vector>

/**
 * The exports of a window: one after another, in the background. GUI thread; its destructor cancels what runs
 * and waits, which takes no longer than a moment.
 */
class ExportQueue : public QObject
{
    Q_OBJECT

public:
    enum class State { Waiting, Running, Ended };
    struct Job
    {
        int id = 0;
        ExportRequest request;
        State state = State::Waiting;
        ExportReport report; ///< once it has ended
    };

    explicit ExportQueue(QObject *parent = nullptr);
    ~ExportQueue() override;

    /// @return the number of the job
    int add(const ExportRequest &request);
    /// A waiting job ends at once, a running one soon; each by ended().
    void cancel(int id);
    void cancelAll();
    /// Forgets a job that has ended.
    void remove(int id);

    bool isRunning() const { return m_running != nullptr; }
    /// A job that was not removed.
    Job job(int id) const;
    /// Jobs that run or wait.
    int openJobs() const;
    /// Of the job that runs; that of one which has ended or waits is empty.
    ExportProgress progress(int id) const;
    /// The job that runs; 0 where none does.
    int runningJob() const;

signals:
    /// A job was added, began or ended.
    void changed();
    void ended(int id);

private:
    Job *find(int id);
    void runNext();
    void finish(const ExportReport &report);
    void endWith(Job &job, const ExportReport &report);

    std::vector<Job> m_jobs; ///< in the order in which they came
    std::unique_ptr<Exporter> m_running;
    int m_runningId = 0;
    std::thread m_thread;
    int m_lastId = 0;
};
