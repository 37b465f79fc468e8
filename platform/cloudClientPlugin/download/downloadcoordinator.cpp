#include "downloadcoordinator.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace {

constexpr int lookMs = 200;
constexpr qint64 importedEveryMs = 1000;
constexpr qint64 firstPauseMs = 1000;
constexpr qint64 longestPauseMs = 30'000;
constexpr int mostBadAnswers = 8; ///< in a row, and nothing between them
constexpr char journalName[] = "/problems.txt";

/// Whether it may pass: troubles of the service, the way there or the disk at any time.
bool isPassing(const WebFailure &failure, int attempts)
{
    const bool mayBeCut = failure.problem == WebProblem::BadAnswer && attempts < mostBadAnswers;
    return mayBeCut || failure.isPassing() || failure.problem == WebProblem::DiskFull;
}

} // namespace

DownloadCoordinator::DownloadCoordinator(QString databasePath, DuplicatePolicy policy)
    : m_databasePath(std::move(databasePath))
    , m_policy(policy)
    , m_timer(this)
    , m_soon(this)
    , m_list(m_databasePath)
    , m_ownership(m_databasePath + QStringLiteral(".download"))
    , m_journal(ObjectSpool::folderOf(m_databasePath, SpoolKind::Downloaded) + QLatin1String(journalName))
    , m_recorder([this](const QVector<SpooledObject> &objects) {
        QMetaObject::invokeMethod(
            this, [this, objects] { onCommitted(objects); }, Qt::QueuedConnection);
    })
    , m_spool(m_databasePath, false, SpoolKind::Downloaded)
    , m_lines(m_spool, this)
{
    m_clock.start();
    m_timer.setInterval(lookMs);
    m_soon.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &DownloadCoordinator::look);
    connect(&m_soon, &QTimer::timeout, this, &DownloadCoordinator::work);
    connect(&m_lines, &SeriesLines::received, this, &DownloadCoordinator::onReceived);
    connect(&m_lines, &SeriesLines::ended, this, &DownloadCoordinator::onFetched);
    connect(&m_lines, &SeriesLines::progressed, this, [this](const AskedSeries &asked, qint64 bytes) {
        if (DownloadJob *job = jobOf(asked.studyUid)) {
            job->bytes += bytes;
            job->rate.add(m_clock.elapsed(), bytes, 0);
        }
    });
}

DownloadCoordinator::~DownloadCoordinator() = default;

void DownloadCoordinator::start()
{
    wake();
}

/// Something has changed: works at once, and then looks as long as there is something to do.
void DownloadCoordinator::wake()
{
    if (!m_timer.isActive()) {
        m_timer.start();
    }
    m_soon.start();
}

void DownloadCoordinator::setPolicy(DuplicatePolicy policy)
{
    m_policy = policy;
    if (m_indexer) {
        m_indexer->setPolicy(policy);
    }
}

void DownloadCoordinator::work()
{
    m_isLoaded = m_isLoaded || m_list.load(&m_jobs);
    settleAll();
    m_isSaved = m_isLoaded && m_list.save();
    if (m_isLoaded && prepare()) {
        pump();
    }
}

void DownloadCoordinator::look()
{
    work();
    if (m_indexer) {
        forgetLost();
    }
    if (m_hasImported && m_clock.elapsed() - m_importedMs >= importedEveryMs) {
        m_hasImported = false;
        m_importedMs = m_clock.elapsed();
        emit imported();
    }
    tell();
    if (m_isSaved && !m_hasImported && !isBusy()) {
        m_timer.stop();
    }
}

bool DownloadCoordinator::isBusy() const
{
    return (m_indexer && m_indexer->waiting() > 0)
        || std::any_of(m_jobs.begin(), m_jobs.end(),
            [this](const DownloadJob &job) { return job.isBusy(isAtService(job)); });
}

/// One program at a time downloads into an index, and takes over what others left there.
bool DownloadCoordinator::prepare()
{
    const bool hasLeftovers = QDir(ObjectSpool::folderOf(m_databasePath, SpoolKind::Downloaded)).exists();
    if (m_indexer || (m_jobs.isEmpty() && !hasLeftovers)) {
        return m_indexer != nullptr;
    }
    if (!m_ownership.tryToGet() || (!m_spool.isOpen() && m_spool.open() != 0)) {
        return false;
    }
    m_indexer = std::make_unique<SpoolIndexer>(m_databasePath, m_spool, m_journal, false, &m_recorder);
    m_indexer->setPolicy(m_policy);
    m_isAdopting = true;
    return true;
}

/// Whether somebody is signed in where it comes from.
bool DownloadCoordinator::isAtService(const DownloadJob &job) const
{
    return m_session.isOpen() && (job.service.isEmpty() || m_session.isAt(job.service));
}

bool DownloadCoordinator::mayFetch()
{
    m_isAdopting = m_isAdopting && m_indexer->waiting() > 0;
    return m_session.isOpen() && !m_isAdopting;
}

void DownloadCoordinator::pump()
{
    if (!mayFetch()) {
        return;
    }
    const qint64 now = m_clock.elapsed();
    for (DownloadJob &job : m_jobs) {
        for (SeriesJob &series : job.series) {
            const bool isDue = !job.isStopped && isAtService(job) && series.state == SeriesJob::State::Waiting
                && series.pending == 0 && series.dueMs <= now;
            if (!m_lines.isFree() || (isDue && !begin(job, series))) {
                return;
            }
        }
    }
}

/// @return false where nothing can be begun at the moment
bool DownloadCoordinator::begin(const DownloadJob &job, SeriesJob &series)
{
    QSet<QString> present;
    if (!m_list.present(series.uid, &present)) {
        return false;
    }
    if (!m_spool.hasRoom(0)) {
        fail(job, series, {WebProblem::DiskFull, {}, 0});
        return false;
    }
    series.state = SeriesJob::State::Fetching;
    series.indexed = present.size();
    series.refused = 0;
    series.listed.clear();
    m_lines.fetch({job.studyUid, series.uid}, present, series.isRecounted || !present.isEmpty());
    return true;
}

void DownloadCoordinator::onReceived(const AskedSeries &asked, const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    m_owners.insert(name, asked);
    m_recorder.expect(name, asked);
    m_indexer->add(name);
    if (SeriesJob *series = seriesOf(asked)) {
        ++series->pending;
        series->attempts = 0;
        jobOf(asked.studyUid)->rate.add(m_clock.elapsed(), 0, 1);
    }
    if (!m_spool.hasRoom(0)) {
        m_lines.abort({});
    }
}

void DownloadCoordinator::onFetched(
    const AskedSeries &asked, const QSet<QString> &listed, const WebFailure &failure)
{
    const DownloadJob *job = jobOf(asked.studyUid);
    SeriesJob *series = seriesOf(asked);
    if (!series) {
        return; // removed meanwhile
    }
    series->listed = listed;
    series->isRecounted = series->isRecounted || !listed.isEmpty();
    if (!listed.isEmpty()) { // a shorter list does not take back what was announced
        series->expected = qMax(series->expected, listed.size());
    }
    if (failure.isNone()) {
        series->failure = {};
        series->state = SeriesJob::State::Landing;
        settle(*job, *series);
    } else if (failure.problem == WebProblem::Unauthorized) {
        series->state = SeriesJob::State::Waiting;
        if (m_session.isOpen()) {
            setSession({});
            emit sessionRefused();
        }
    } else {
        fail(*job, *series, failure);
    }
    wake();
}

void DownloadCoordinator::fail(const DownloadJob &job, SeriesJob &series, const WebFailure &failure)
{
    series.state = SeriesJob::State::Waiting;
    if (failure.problem == WebProblem::Stopped) {
        return;
    }
    series.failure = failure;
    ++series.attempts;
    if (isPassing(failure, series.attempts)) {
        const qint64 pause = firstPauseMs << qMin(series.attempts - 1, 10);
        series.dueMs = m_clock.elapsed() + qMin(pause, longestPauseMs);
    } else {
        series.state = SeriesJob::State::Failed;
    }
    m_list.setState(job, series);
}

void DownloadCoordinator::onCommitted(const QVector<SpooledObject> &objects)
{
    for (const SpooledObject &object : objects) {
        const AskedSeries owner = m_owners.take(object.path);
        SeriesJob *series = seriesOf(owner);
        if (!series) {
            continue; // left by an earlier program, or of a study that was taken off the list
        }
        --series->pending;
        ++(object.isTaken ? series->indexed : series->refused);
        m_hasImported = m_hasImported || object.isTaken;
        settle(*jobOf(owner.studyUid), *series);
    }
    wake();
}

/// A series is through when all that came of it has its verdict: done where the index has all of it.
void DownloadCoordinator::settle(const DownloadJob &job, SeriesJob &series)
{
    if (series.state != SeriesJob::State::Landing || series.pending > 0) {
        return;
    }
    QSet<QString> held;
    if (!m_list.present(series.uid, &held)) {
        return; // the next look asks again
    }
    series.indexed = held.size();
    if (series.isComplete(held)) {
        series.state = SeriesJob::State::Done;
        series.listed.clear();
    } else if (!series.isRecounted) {
        series.isRecounted = true; // the list says what is missing
        series.state = SeriesJob::State::Waiting;
        return;
    } else {
        series.state = SeriesJob::State::Failed;
        series.failure = {WebProblem::Incomplete, {}, 0};
    }
    m_list.setState(job, series);
}

void DownloadCoordinator::settleAll()
{
    for (DownloadJob &job : m_jobs) {
        for (SeriesJob &series : job.series) {
            settle(job, series);
        }
    }
}

/// An object that has gone from the spool gets no verdict: nobody waits for it, when nothing waits any more.
void DownloadCoordinator::forgetLost()
{
    const bool isIdle = m_indexer->waiting() == 0;
    if (isIdle && m_wasIdle && !m_owners.isEmpty()) {
        m_owners.clear();
        m_recorder.forget();
        for (DownloadJob &job : m_jobs) {
            for (SeriesJob &series : job.series) {
                series.pending = 0;
            }
        }
        settleAll();
    }
    m_wasIdle = isIdle;
}

void DownloadCoordinator::setSession(const CloudSession &session)
{
    m_session = session;
    m_lines.setService(session.service);
    for (DownloadJob &job : m_jobs) {
        for (SeriesJob &series : job.series) {
            series.dueMs = 0;
        }
    }
    wake();
}

void DownloadCoordinator::add(const DownloadStudy &study)
{
    DownloadJob *job = jobOf(study.studyUid);
    if (!job) {
        m_jobs.append(DownloadJob{study.studyUid, study.label, {}, false, {}, {}, 0});
        job = &m_jobs.last();
    }
    job->service = CloudSession::plainAddress(m_session.service.address);
    for (const DownloadSeries &wanted : study.series) {
        SeriesJob *series = job->find(wanted.seriesUid);
        if (!series) {
            SeriesJob added;
            added.uid = wanted.seriesUid;
            job->series.append(added);
            series = &job->series.last();
        } else if (series->state == SeriesJob::State::Done) {
            series->state = SeriesJob::State::Waiting; // there may be more of it since
            series->isRecounted = false;
        }
        series->expected = wanted.expected >= 0 ? wanted.expected : series->expected;
    }
    job->tryAgain();
    m_list.add(*job);
    wake();
}

void DownloadCoordinator::stop(const QString &studyUid)
{
    if (DownloadJob *job = jobOf(studyUid)) {
        job->isStopped = true;
        m_lines.abort(studyUid);
        m_list.setStopped(*job);
        wake();
    }
}

void DownloadCoordinator::resume(const QString &studyUid)
{
    if (DownloadJob *job = jobOf(studyUid)) {
        job->tryAgain();
        m_list.setStopped(*job);
        wake();
    }
}

void DownloadCoordinator::remove(const QString &studyUid)
{
    const auto job = std::find_if(
        m_jobs.begin(), m_jobs.end(), [&](const DownloadJob &one) { return one.studyUid == studyUid; });
    if (job != m_jobs.end()) {
        job->isStopped = true;
        m_lines.abort(studyUid);
        m_jobs.erase(job);
        m_list.remove(studyUid);
        wake();
    }
}

DownloadJob *DownloadCoordinator::jobOf(const QString &studyUid)
{
    const auto job = std::find_if(
        m_jobs.begin(), m_jobs.end(), [&](const DownloadJob &one) { return one.studyUid == studyUid; });
    return job == m_jobs.end() ? nullptr : &*job;
}

SeriesJob *DownloadCoordinator::seriesOf(const AskedSeries &owner)
{
    DownloadJob *job = jobOf(owner.studyUid);
    return job ? job->find(owner.seriesUid) : nullptr;
}

void DownloadCoordinator::tell()
{
    QVector<DownloadTally> tallies;
    for (const DownloadJob &job : qAsConst(m_jobs)) {
        tallies.append(job.tally(isAtService(job), m_clock.elapsed()));
    }
    emit told(tallies);
}
