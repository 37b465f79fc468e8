#include "exportqueue.h"

#include <algorithm>

ExportQueue::ExportQueue(QObject *parent)
    : QObject(parent)
{ }

ExportQueue::~ExportQueue()
{
    if (m_running) {
        m_running->cancel();
    }
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

int ExportQueue::add(const ExportRequest &request)
{
    m_jobs.push_back({++m_lastId, request, State::Waiting, {}});
    const int id = m_lastId;
    runNext();
    emit changed();
    return id;
}

ExportQueue::Job *ExportQueue::find(int id)
{
    const auto found =
        std::find_if(m_jobs.begin(), m_jobs.end(), [id](const Job &job) { return job.id == id; });
    return found == m_jobs.end() ? nullptr : &*found;
}

ExportQueue::Job ExportQueue::job(int id) const
{
    for (const Job &job : m_jobs) {
        if (job.id == id) {
            return job;
        }
    }
    return {};
}

int ExportQueue::openJobs() const
{
    return int(std::count_if(
        m_jobs.begin(), m_jobs.end(), [](const Job &job) { return job.state != State::Ended; }));
}

int ExportQueue::runningJob() const
{
    return m_running ? m_runningId : 0;
}

ExportProgress ExportQueue::progress(int id) const
{
    return m_running && m_runningId == id ? m_running->progress() : ExportProgress();
}

void ExportQueue::cancel(int id)
{
    Job *job = find(id);
    if (job && job->state == State::Running) {
        m_running->cancel();
    } else if (job && job->state == State::Waiting) {
        ExportReport report;
        report.end = ExportEnd::Cancelled;
        report.place = job->request.target;
        endWith(*job, report);
    }
}

void ExportQueue::cancelAll()
{
    QVector<int> ids;
    for (auto job = m_jobs.rbegin(); job != m_jobs.rend(); ++job) {
        ids.append(job->id); // those that wait first, so that none begins
    }
    for (const int id : qAsConst(ids)) {
        cancel(id);
    }
}

void ExportQueue::remove(int id)
{
    m_jobs.erase(std::remove_if(m_jobs.begin(), m_jobs.end(),
                     [id](const Job &job) { return job.id == id && job.state == State::Ended; }),
        m_jobs.end());
}

void ExportQueue::runNext()
{
    const auto next = std::find_if(
        m_jobs.begin(), m_jobs.end(), [](const Job &job) { return job.state == State::Waiting; });
    if (m_running || next == m_jobs.end()) {
        return;
    }
    next->state = State::Running;
    m_runningId = next->id;
    m_running = std::make_unique<Exporter>(next->request);
    m_thread = std::thread([this, exporter = m_running.get()] {
        const ExportReport report = exporter->run();
        QMetaObject::invokeMethod(
            this, [this, report] { finish(report); }, Qt::QueuedConnection);
    });
}

void ExportQueue::finish(const ExportReport &report)
{
    m_thread.join();
    m_running.reset();
    if (Job *job = find(m_runningId)) {
        endWith(*job, report);
    }
    runNext();
    emit changed();
}

void ExportQueue::endWith(Job &job, const ExportReport &report)
{
    job.state = State::Ended;
    job.report = report;
    const int id = job.id;
    emit ended(id);
    emit changed();
}
