#include "uploadcoordinator.h"

#include <utility>

namespace {

constexpr int lookMs = 200; ///< tallies are told as often

} // namespace

UploadCoordinator::UploadCoordinator(const QString &databasePath, CloudSession session)
    : m_situation(databasePath, std::move(session))
    , m_records(databasePath, this)
    , m_jobs(m_situation, m_records, this)
    , m_sender(databasePath, m_situation, m_jobs, m_records, this)
    , m_standing(m_situation, m_records)
    , m_lookTimer(this)
{
    qRegisterMetaType<UploadTally>();
    m_lookTimer.setInterval(lookMs);
    connect(&m_lookTimer, &QTimer::timeout, this, &UploadCoordinator::look);
    connect(&m_sender, &UploadSender::sessionRefused, this, &UploadCoordinator::sessionRefused);
    connectRecords();
    connectJobs();
}

void UploadCoordinator::connectRecords()
{
    connect(&m_records, &UploadRecords::looked, this, [this](const QVector<UploadRow> &rows) {
        m_jobs.takeRows(rows);
        m_sender.sendOn();
    });
    connect(&m_records, &UploadRecords::recorded, &m_jobs, &UploadJobs::forget);
    connect(&m_records, &UploadRecords::refusingChanged, &m_jobs, &UploadJobs::noteChange);
}

void UploadCoordinator::connectJobs()
{
    connect(&m_jobs, &UploadJobs::runEnded, this, [this](qint64 task) {
        tellAgain(task);
        emit runEnded(task);
    });
    connect(&m_jobs, &UploadJobs::ended, this, [this](qint64 task) {
        m_sender.abort(task);
        emit ended(task);
    });
}

void UploadCoordinator::start()
{
    m_situation.start();
    m_sender.openLines();
    m_records.start();
    m_lookTimer.start();
    look();
}

void UploadCoordinator::look()
{
    if (m_situation.tryToOwn()) {
        m_jobs.noteChange();
    }
    m_sender.sendOn();
    tellChanged();
}

// What is asked for

void UploadCoordinator::setSession(const CloudSession &session)
{
    m_situation.setSession(session);
    m_sender.openLines();
    m_jobs.noteChange();
    look();
}

void UploadCoordinator::add(const UploadOrder &order)
{
    tell(*m_jobs.add(order));
}

void UploadCoordinator::finish(qint64 task)
{
    const Job job = m_jobs.of(task);
    if (!job || job->isCancelled) {
        return;
    }
    job->isCancelled = true;
    m_sender.abort(task);
    m_records.flush();
    m_jobs.remove(task);
    tell(*job);
    m_sender.sendOn();
    // Whoever holds the index's lock does not hold up the user.
    constexpr int mostMs = 800;
    QTimer::singleShot(mostMs, &m_jobs, [this, task] { m_jobs.end(task); });
}

void UploadCoordinator::flag(qint64 task)
{
    m_records.flush();
    m_records.write([task](UploadStore &store) { return store.flagStored(task); });
}

void UploadCoordinator::retryFailed(qint64 task)
{
    m_records.write([task](UploadStore &store) { return store.retryFailed(task); },
        [this, task] {
            if (const Job job = m_jobs.of(task)) {
                job->rewind();
                job->isRunTold = false;
                m_situation.health().forgive();
            }
        });
}

void UploadCoordinator::tryNow()
{
    m_situation.health().hurry();
    for (const Job &job : m_jobs.all()) {
        job->hurry();
    }
    m_jobs.noteChange();
    look();
}

void UploadCoordinator::rename(qint64 task, const QString &patientName)
{
    m_records.write([task, patientName](UploadStore &store) { return store.rename(task, patientName); });
}

void UploadCoordinator::tellAgain(qint64 task)
{
    if (const Job job = m_jobs.of(task)) {
        tell(*job);
    }
}

// What is told

void UploadCoordinator::tell(UploadJob &job)
{
    job.isChanged = false;
    emit tallied(job.id(), m_standing.of(job));
}

void UploadCoordinator::tellChanged()
{
    for (const Job &job : m_jobs.all()) {
        if (job->isChanged) {
            tell(*job);
        }
    }
}
