#include "uploadcoordinator.h"

#include <QFile>

#include <utility>

namespace {

constexpr int readWaitMs = 200;
constexpr int flushMs = 100;
constexpr int lookMs = 200; ///< tallies are told as often
constexpr int patienceMs = 60000; ///< of silence: an archive may think long about a large request
constexpr qint64 healthyMs = 60000; ///< what was acknowledged since says that it is not the service
constexpr int mostUnrecorded = 2000;
constexpr int enoughOutcomes = 64; ///< to be recorded at once
constexpr int mostLooks = 256; ///< at files, before others have their turn

} // namespace

UploadCoordinator::UploadCoordinator(QString databasePath, CloudSession session)
    : m_databasePath(std::move(databasePath))
    , m_session(std::move(session))
    , m_ownership(m_databasePath + QStringLiteral(".upload"))
    , m_store(m_databasePath, readWaitMs)
    , m_lines(this)
    , m_flushTimer(this)
    , m_lookTimer(this)
    , m_recorder(new UploadRecorder(m_databasePath))
{
    qRegisterMetaType<UploadTally>();
    m_flushTimer.setSingleShot(true);
    m_flushTimer.setInterval(flushMs);
    m_lookTimer.setInterval(lookMs);
    connect(&m_flushTimer, &QTimer::timeout, this, &UploadCoordinator::flush);
    connect(&m_lookTimer, &QTimer::timeout, this, &UploadCoordinator::look);
    connect(&m_lines, &UploadLines::came, this, &UploadCoordinator::onCame);
    m_recorder->moveToThread(&m_recorderThread);
    connect(&m_recorderThread, &QThread::started, m_recorder, &UploadRecorder::start);
    connect(&m_recorderThread, &QThread::finished, m_recorder, &QObject::deleteLater);
    connect(m_recorder, &UploadRecorder::written, this, &UploadCoordinator::onWritten);
    connect(m_recorder, &UploadRecorder::looked, this, &UploadCoordinator::takeRows);
    connect(m_recorder, &UploadRecorder::refusing, this, [this](bool isRefusing) {
        m_isIndexRefusing = isRefusing;
        for (const Job &job : qAsConst(m_jobs)) {
            job->isChanged = true;
        }
    });
    m_recorderThread.setObjectName(QStringLiteral("upload records"));
}

UploadCoordinator::~UploadCoordinator()
{
    flush();
    if (m_recorderThread.isRunning()) {
        // Behind this the recorder has heard of everything; what it cannot write now it tries once more at
        // its end.
        QMetaObject::invokeMethod(
            m_recorder, [] {}, Qt::BlockingQueuedConnection);
        m_recorderThread.quit();
        m_recorderThread.wait();
    } else {
        delete m_recorder;
    }
}

void UploadCoordinator::start()
{
    m_clock.start();
    m_lines.setService(m_session.service, patienceMs);
    m_recorderThread.start();
    m_lookTimer.start();
    look();
}

void UploadCoordinator::look()
{
    if (!m_isOwner && m_ownership.tryToGet()) {
        m_isOwner = true;
        for (const Job &job : qAsConst(m_jobs)) {
            job->isChanged = true;
        }
    }
    sendOn();
    tellChanged();
}

// What is asked for

void UploadCoordinator::setSession(const CloudSession &session)
{
    m_session = session;
    m_isSessionRefused = false;
    m_trouble.clear();
    m_lines.setService(session.service, patienceMs);
    for (const Job &job : qAsConst(m_jobs)) {
        job->isChanged = true;
    }
    look();
}

void UploadCoordinator::add(const UploadOrder &order)
{
    const Job job = std::make_shared<UploadJob>(order.id, order.service, order.files.size());
    m_jobs.insert(order.id, job);
    write([order](UploadStore &store) { return store.add(order); });
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
    flush();
    write([task](UploadStore &store) { return store.remove(task); }, [this, task] { end(task); });
    tell(*job);
    sendOn();
    // Whoever holds the index's lock does not hold up the user.
    constexpr int mostMs = 800;
    QTimer::singleShot(mostMs, this, [this, task] { end(task); });
}

void UploadCoordinator::flag(qint64 task)
{
    flush();
    write([task](UploadStore &store) { return store.flagStored(task); });
}

void UploadCoordinator::retryFailed(qint64 task)
{
    write([task](UploadStore &store) { return store.retryFailed(task); },
        [this, task] {
            if (const Job job = m_jobs.value(task)) {
                job->rewind();
                job->isRunTold = false;
                m_trouble.clear();
            }
        });
}

void UploadCoordinator::rename(qint64 task, const QString &patientName)
{
    write([task, patientName](UploadStore &store) { return store.rename(task, patientName); });
}

void UploadCoordinator::tellAgain(qint64 task)
{
    if (const Job job = m_jobs.value(task)) {
        tell(*job);
    }
}

// The index

/// @param then is done when the index has taken it
void UploadCoordinator::write(const UploadRecorder::Write &order, const std::function<void()> &then)
{
    const qint64 ticket = ++m_ticket;
    if (then) {
        m_thens.insert(ticket, then);
    }
    QMetaObject::invokeMethod(
        m_recorder, [recorder = m_recorder, order, ticket] { recorder->take(order, ticket); },
        Qt::QueuedConnection);
}

void UploadCoordinator::onWritten(qint64 ticket, const QVector<UploadRow> &rows)
{
    const std::function<void()> then = m_thens.take(ticket);
    if (then) {
        then();
    }
    takeRows(rows);
    sendOn();
}

void UploadCoordinator::takeRows(const QVector<UploadRow> &rows)
{
    QSet<qint64> present;
    for (const UploadRow &row : rows) {
        present.insert(row.id);
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
        const qint64 task = job->id();
        write([task](UploadStore &store) { return store.remove(task); }, [this, task] { end(task); });
    }
}

void UploadCoordinator::end(qint64 task)
{
    if (m_jobs.remove(task) > 0) {
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
    const int most = m_trouble.isNone() ? m_pace.requests() : 1;
    return m_isOwner && m_lines.count() < most && !m_trouble.mustWait(m_clock.elapsed())
        && (!m_isIndexRefusing || m_unrecorded < mostUnrecorded);
}

void UploadCoordinator::sendOn()
{
    while (maySend()) {
        const UploadBatch batch = nextBatch();
        if (batch.isEmpty()) {
            m_pace.interrupted();
            return;
        }
        m_lines.send(batch);
    }
}

UploadBatch UploadCoordinator::nextBatch()
{
    for (const Job &job : qAsConst(m_jobs)) {
        if (isRunnable(*job)) {
            UploadBatch batch = batchOf(*job);
            if (!batch.isEmpty()) {
                job->setOnItsWay(batch.files.size());
                job->isChanged = true;
                return batch;
            }
        }
    }
    return {};
}

UploadBatch UploadCoordinator::batchOf(UploadJob &job)
{
    const bool isProbe = !m_trouble.isNone();
    const int most = isProbe ? 1 : m_pace.batchObjects();
    UploadBatch batch{job.id(), {}, m_acknowledgements};
    qint64 bytes = 0;
    QueuedFile next;
    for (int looks = 0; looks < mostLooks && batch.files.size() < most && bytes < m_pace.batchBytes();
         ++looks) {
        if (!job.takeNext(m_store, m_clock.elapsed(), !isProbe && batch.isEmpty(), &next)) {
            break;
        }
        if (next.isAlone && !batch.isEmpty()) {
            job.giveBack(next);
            break;
        }
        if (prepare(job, &next)) {
            batch.files.append(next);
            bytes += next.file.bytes;
        }
        if (next.isAlone && !batch.isEmpty()) {
            break;
        }
    }
    return batch;
}

/// @return whether the file can be sent; what keeps it from that is recorded
bool UploadCoordinator::prepare(UploadJob &job, QueuedFile *file)
{
    UploadFault::Kind fault = m_look.look(&file->file);
    if (fault == UploadFault::Kind::FileUnreadable) {
        const QString path = m_store.pathOf(file->file.id);
        if (!path.isEmpty() && path != file->file.path) {
            file->file.path = path;
            fault = m_look.look(&file->file);
        }
    }
    if (fault != UploadFault::Kind::None) {
        job.setOnItsWay(1);
        record(job, *file, {UploadJudge::Deed::Record, fault, 0, {}});
    }
    return fault == UploadFault::Kind::None;
}

// What comes back

void UploadCoordinator::onCame(const UploadBatch &batch, const StoreAnswer &answer)
{
    noteAcknowledged(batch, answer);
    noteFailure(batch, answer.failure);
    const Job job = m_jobs.value(batch.task);
    if (!job) {
        return; // it has ended without waiting for this
    }
    const bool wasAlone = batch.files.size() == 1;
    for (int number = 0; number < batch.files.size(); ++number) {
        const QueuedFile &file = batch.files[number];
        settle(*job, file,
            UploadJudge::judge(file, answer.verdicts.value(number), answer.failure, wasAlone,
                file.troubleSinceMs >= 0 && wasHealthyAt(file.troubleSinceMs)),
            wasAlone);
    }
    job->isChanged = true;
    sendOn();
    if (m_lines.count() == 0 || m_outcomes.size() >= enoughOutcomes) {
        flush(); // nothing more is coming that should go along
    }
}

void UploadCoordinator::noteAcknowledged(const UploadBatch &batch, const StoreAnswer &answer)
{
    qint64 bytes = 0;
    int stored = 0;
    for (int file = 0; file < batch.files.size(); ++file) {
        if (answer.verdicts.value(file).isStored()) {
            bytes += batch.files[file].file.bytes;
            ++stored;
        }
    }
    if (stored == 0) {
        m_pace.interrupted();
        return;
    }
    ++m_acknowledgements;
    m_acknowledgedMs = m_clock.elapsed();
    m_trouble.clear();
    m_pace.acknowledged(bytes, stored, m_acknowledgedMs);
}

/// Others that were acknowledged meanwhile say that the service is well; so do those before, where nothing
/// but objects that have failed before is left to ask with.
void UploadCoordinator::noteFailure(const UploadBatch &batch, const WebFailure &failure)
{
    if (failure.problem == WebProblem::Unauthorized) {
        refuseSession();
    }
    const Job job = m_jobs.value(batch.task);
    const bool isOfObject = batch.files.size() == 1 && UploadJudge::maySuspect(failure) && job
        && !job->hasFresh() && wasHealthyAt(m_clock.elapsed());
    if (UploadJudge::isOfService(failure) && m_acknowledgements == batch.healthyAt && !isOfObject) {
        m_trouble.note(failure, m_clock.elapsed());
    }
}

bool UploadCoordinator::wasHealthyAt(qint64 ms) const
{
    return m_acknowledgements > 0 && m_acknowledgedMs + healthyMs > ms;
}

void UploadCoordinator::settle(
    UploadJob &job, QueuedFile file, const UploadJudge::Judgement &judgement, bool wasAlone)
{
    using Deed = UploadJudge::Deed;
    UploadJudge::Judgement what = judgement;
    if (what.deed == Deed::LookAgain) {
        lookAgain(&file, &what);
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

/// A file whose path or whose object has changed since it was entered has another try; one that is gone has
/// none.
void UploadCoordinator::lookAgain(QueuedFile *file, UploadJudge::Judgement *judgement)
{
    judgement->deed = UploadJudge::Deed::AgainAlone;
    const QString path = m_store.pathOf(file->file.id);
    if (!path.isEmpty()) {
        file->file.path = path;
    }
    const QString uid = m_look.instanceOf(file->file.path);
    if (uid.isEmpty()) {
        judgement->deed = UploadJudge::Deed::Record;
        judgement->fault =
            QFile::exists(file->file.path) ? UploadFault::Kind::NotDicom : UploadFault::Kind::FileUnreadable;
    } else if (uid != file->file.sopInstance) {
        file->file.sopInstance = uid;
        judgement->deed = UploadJudge::Deed::Again;
    }
}

void UploadCoordinator::refuseSession()
{
    if (!std::exchange(m_isSessionRefused, true)) {
        for (const Job &job : qAsConst(m_jobs)) {
            job->isChanged = true;
        }
        emit sessionRefused();
    }
}

void UploadCoordinator::record(
    UploadJob &job, const QueuedFile &file, const UploadJudge::Judgement &judgement)
{
    m_outcomes.append(
        {job.id(), file.file, judgement.fault, judgement.reason, judgement.failure, file.tries});
    ++m_unrecorded;
    if (!m_flushTimer.isActive()) {
        m_flushTimer.start();
    }
}

void UploadCoordinator::flush()
{
    if (m_outcomes.isEmpty()) {
        return;
    }
    const QVector<UploadOutcome> outcomes = std::exchange(m_outcomes, {});
    write([outcomes](UploadStore &store) { return store.record(outcomes); },
        [this, outcomes] {
            m_unrecorded -= outcomes.size();
            for (const UploadOutcome &outcome : outcomes) {
                if (const Job job = m_jobs.value(outcome.task)) {
                    job->forget(outcome, m_clock.elapsed());
                }
            }
        });
}

// What is told

UploadTally::State UploadCoordinator::stateOf(const UploadJob &job) const
{
    using State = UploadTally::State;
    if (job.isOver()) {
        return State::Finished;
    }
    if (job.isCancelled) {
        return State::Cancelled;
    }
    if (!m_isOwner || m_isIndexRefusing) {
        return State::Paused;
    }
    if (!job.isEntered()) {
        return State::Listing;
    }
    if (!isRunnable(job)) {
        return State::NeedsSession;
    }
    return m_trouble.isNone() ? State::Running : State::Retrying;
}

void UploadCoordinator::tell(UploadJob &job)
{
    job.isChanged = false;
    UploadTally tally = job.tally(m_clock.elapsed());
    tally.state = stateOf(job);
    tally.trouble = m_trouble.failure();
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
