#include "uploadcoordinator.h"

#include <QDateTime>

#include <utility>

namespace {

constexpr int readWaitMs = 200;
constexpr int lookMs = 200; ///< tallies are told as often
constexpr int patienceMs = 60000; ///< of silence: an archive may think long about a large request

} // namespace

UploadCoordinator::UploadCoordinator(QString databasePath, CloudSession session)
    : m_databasePath(std::move(databasePath))
    , m_session(std::move(session))
    , m_ownership(m_databasePath + QStringLiteral(".upload"))
    , m_source(m_databasePath, readWaitMs)
    , m_lines(this)
    , m_lookTimer(this)
    , m_records(m_databasePath, this)
{
    qRegisterMetaType<UploadTally>();
    m_lookTimer.setInterval(lookMs);
    connect(&m_lookTimer, &QTimer::timeout, this, &UploadCoordinator::look);
    connect(&m_lines, &UploadLines::came, this, &UploadCoordinator::onCame);
    connect(&m_records, &UploadRecords::looked, this, &UploadCoordinator::takeRows);
    connect(&m_records, &UploadRecords::recorded, this, &UploadCoordinator::onRecorded);
    connect(&m_records, &UploadRecords::refusingChanged, this, &UploadCoordinator::noteChange);
}

void UploadCoordinator::start()
{
    m_clock.start();
    m_lines.setService(m_session.service, patienceMs);
    m_records.start();
    m_lookTimer.start();
    look();
}

void UploadCoordinator::look()
{
    if (!m_isOwner && m_ownership.tryToGet()) {
        m_isOwner = true;
        noteChange();
    }
    sendOn();
    tellChanged();
}

// What is asked for

void UploadCoordinator::setSession(const CloudSession &session)
{
    m_health.beginSession(session.service.address != m_session.service.address);
    m_session = session;
    m_isSessionRefused = false;
    m_lines.setService(session.service, patienceMs);
    noteChange();
    look();
}

void UploadCoordinator::add(const UploadOrder &order)
{
    const Job job = std::make_shared<UploadJob>(order.id, order.service, order.files.size());
    m_jobs.insert(order.id, job);
    m_records.write([order](UploadStore &store) { return store.add(order); });
    tell(*job);
}

void UploadCoordinator::finish(qint64 task)
{
    const Job job = m_jobs.value(task);
    if (!job || job->isCancelled) {
        return;
    }
    job->isCancelled = true;
    m_lines.abort(task);
    m_records.flush();
    remove(task);
    tell(*job);
    sendOn();
    // Whoever holds the index's lock does not hold up the user.
    constexpr int mostMs = 800;
    QTimer::singleShot(mostMs, this, [this, task] { end(task); });
}

/// Until the index has let it go, its row there is not taken for an upload to be gone on with.
void UploadCoordinator::remove(qint64 task)
{
    m_leaving.insert(task);
    m_records.write([task](UploadStore &store) { return store.remove(task); },
        [this, task] {
            m_leaving.remove(task);
            end(task);
        });
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
            if (const Job job = m_jobs.value(task)) {
                job->rewind();
                job->isRunTold = false;
                m_health.forgive();
            }
        });
}

void UploadCoordinator::tryNow()
{
    m_health.hurry();
    for (const Job &job : qAsConst(m_jobs)) {
        job->hurry();
    }
    noteChange();
    look();
}

void UploadCoordinator::rename(qint64 task, const QString &patientName)
{
    m_records.write([task, patientName](UploadStore &store) { return store.rename(task, patientName); });
}

void UploadCoordinator::tellAgain(qint64 task)
{
    if (const Job job = m_jobs.value(task)) {
        tell(*job);
    }
}

// The index

void UploadCoordinator::takeRows(const QVector<UploadRow> &rows)
{
    QSet<qint64> present;
    for (const UploadRow &row : rows) {
        present.insert(row.id);
        if (m_leaving.contains(row.id) && !m_jobs.contains(row.id)) {
            continue;
        }
        Job &job = m_jobs[row.id];
        if (!job) { // of an earlier run, or of another program
            job = std::make_shared<UploadJob>(row.id, row.service, row.files);
            job->isRunTold = row.waiting() == 0;
        }
        job->setRow(row);
        endIfOver(job);
    }
    const QMap<qint64, Job> jobs = m_jobs;
    for (const Job &job : jobs) {
        if (job->isEntered() && !present.contains(job->id())) {
            end(job->id()); // by another program, or at our wish
        }
    }
    sendOn();
}

void UploadCoordinator::onRecorded(const QVector<UploadOutcome> &outcomes)
{
    for (const UploadOutcome &outcome : outcomes) {
        if (const Job job = m_jobs.value(outcome.task)) {
            job->forget(outcome, m_clock.elapsed());
        }
    }
}

void UploadCoordinator::endIfOver(const Job &job)
{
    if (!job->isOver() || job->isCancelled) {
        return;
    }
    if (!std::exchange(job->isRunTold, true)) {
        tell(*job);
        emit runEnded(job->id());
    }
    if (job->row().failed == 0 && m_isOwner) {
        job->isCancelled = true; // nothing more is to be done with it
        remove(job->id());
    }
}

void UploadCoordinator::end(qint64 task)
{
    if (m_jobs.remove(task) > 0) {
        m_lines.abort(task);
        emit ended(task);
    }
}

// What is sent

bool UploadCoordinator::isRunnable(const UploadJob &job) const
{
    return job.isEntered() && !job.isCancelled && m_session.isOpen() && !m_isSessionRefused
        && (job.service().isEmpty() || m_session.isAt(job.service()));
}

bool UploadCoordinator::maySend() const
{
    return m_isOwner && m_lines.count() < m_health.mostRequests() && !m_health.mustWait(m_clock.elapsed())
        && m_records.hasRoom();
}

void UploadCoordinator::sendOn()
{
    while (maySend()) {
        const UploadBatch batch = nextBatch();
        if (batch.isEmpty()) {
            m_health.rest();
            return;
        }
        m_lines.send(batch);
    }
}

UploadBatch UploadCoordinator::nextBatch()
{
    for (const Job &job : qAsConst(m_jobs)) {
        if (!isRunnable(*job)) {
            continue;
        }
        const UploadBatch batch = m_source.next(
            *job, m_health, m_clock.elapsed(), [this, &job](const QueuedFile &file, UploadFault::Kind fault) {
                job->setOnItsWay(1);
                record(*job, file, {UploadJudge::Deed::Record, fault, 0, {}});
            });
        if (!batch.isEmpty()) {
            job->setOnItsWay(batch.files.size());
            job->isChanged = true;
            return batch;
        }
        endIfOver(job); // where all the rest has gone
    }
    return {};
}

// What comes back

void UploadCoordinator::onCame(const UploadBatch &batch, const StoreAnswer &answer)
{
    const Job job = m_jobs.value(batch.task);
    const qint64 waitedUntil = m_health.waitsUntilMs();
    m_health.note(batch, answer, job && !job->hasFresh(), m_clock.elapsed());
    if (m_health.waitsUntilMs() != waitedUntil) {
        noteChange(); // of all uploads: they wait for the same service
    }
    if (answer.failure.problem == WebProblem::Unauthorized && batch.session == m_health.session()) {
        refuseSession();
    }
    if (!job) {
        return; // it has ended without waiting for this
    }
    const bool wasAlone = batch.files.size() == 1;
    for (int number = 0; number < batch.files.size(); ++number) {
        const QueuedFile &file = batch.files[number];
        settle(*job, file,
            UploadJudge::judge(file, answer.verdicts.value(number), answer.failure, wasAlone,
                file.troubleSinceMs >= 0 && m_health.wasWellAt(file.troubleSinceMs)),
            wasAlone);
    }
    job->isChanged = true;
    sendOn();
    m_records.flush(m_lines.count() > 0);
}

void UploadCoordinator::settle(
    UploadJob &job, QueuedFile file, const UploadJudge::Judgement &judgement, bool wasAlone)
{
    using Deed = UploadJudge::Deed;
    UploadJudge::Judgement what = judgement;
    if (what.deed == Deed::LookAgain) {
        m_source.lookAgain(&file.file, &what);
    }
    if (what.deed == Deed::Record) {
        record(job, file, what);
        return;
    }
    job.setOnItsWay(-1);
    if (what.deed == Deed::AgainAlone) {
        file.isAlone = true;
        if (file.troubleSinceMs < 0) {
            file.troubleSinceMs = m_clock.elapsed();
        }
        if (wasAlone) {
            file.notBeforeMs = m_clock.elapsed() + UploadTrouble::pauseAfter(file.tries++);
        }
    }
    if (!job.isCancelled) {
        job.giveBack(file);
    }
}

void UploadCoordinator::refuseSession()
{
    if (!std::exchange(m_isSessionRefused, true)) {
        noteChange();
        emit sessionRefused();
    }
}

void UploadCoordinator::record(
    UploadJob &job, const QueuedFile &file, const UploadJudge::Judgement &judgement)
{
    m_records.record({job.id(), file.file, judgement.fault, judgement.reason, judgement.failure, file.tries});
}

// What is told

void UploadCoordinator::noteChange()
{
    for (const Job &job : qAsConst(m_jobs)) {
        job->isChanged = true;
    }
}

UploadTally::State UploadCoordinator::stateOf(const UploadJob &job) const
{
    using State = UploadTally::State;
    if (job.isOver()) {
        return State::Finished;
    }
    if (job.isCancelled) {
        return State::Cancelled;
    }
    if (!m_isOwner || m_records.isRefusing()) {
        return State::Paused;
    }
    if (!job.isEntered()) {
        return State::Listing;
    }
    if (!isRunnable(job)) {
        return State::NeedsSession;
    }
    return m_health.isInTrouble() ? State::Retrying : State::Running;
}

qint64 UploadCoordinator::nextTryMs(const UploadJob &job) const
{
    return QDateTime::currentMSecsSinceEpoch() + qMax(m_health.waitsUntilMs(), job.dueMs())
        - m_clock.elapsed();
}

void UploadCoordinator::tell(UploadJob &job)
{
    job.isChanged = false;
    UploadTally tally = job.tally(m_clock.elapsed());
    tally.state = stateOf(job);
    tally.trouble = m_health.trouble();
    tally.nextTryMs = nextTryMs(job);
    emit tallied(job.id(), tally);
}

void UploadCoordinator::tellChanged()
{
    for (const Job &job : qAsConst(m_jobs)) {
        if (job->isChanged) {
            tell(*job);
        }
    }
}
