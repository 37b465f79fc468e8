#include "downloadcoordinator.h"

#include <algorithm>

namespace {

constexpr int lookMs = 200;
constexpr qint64 importedEveryMs = 1000;

} // namespace

DownloadCoordinator::DownloadCoordinator(const QString &databasePath, DuplicatePolicy policy)
    : m_timer(this)
    , m_soon(this)
    , m_queue(databasePath)
    , m_landing(databasePath, policy, this)
    , m_lines(m_landing.spool(), this)
{
    m_clock.start();
    m_timer.setInterval(lookMs);
    m_soon.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &DownloadCoordinator::look);
    connect(&m_soon, &QTimer::timeout, this, &DownloadCoordinator::work);
    connect(&m_lines, &SeriesLines::received, this, &DownloadCoordinator::onReceived);
    connect(&m_lines, &SeriesLines::progressed, this, &DownloadCoordinator::onProgressed);
    connect(&m_lines, &SeriesLines::ended, this, &DownloadCoordinator::onFetched);
    connect(&m_landing, &DownloadLanding::landed, this, &DownloadCoordinator::onLanded);
    connect(&m_landing, &DownloadLanding::lost, this, [this] { m_queue.forgetPending(); });
}

DownloadCoordinator::~DownloadCoordinator() = default;

/// Something has changed: works at once, and then looks as long as there is something to do.
void DownloadCoordinator::wake()
{
    if (!m_timer.isActive()) {
        m_timer.start();
    }
    m_soon.start();
}

void DownloadCoordinator::work()
{
    const bool isLoaded = m_queue.load();
    m_queue.settleAll();
    m_isSaved = m_queue.save();
    if (isLoaded && (!m_queue.jobs().isEmpty() || m_landing.hasLeftovers()) && m_landing.open()) {
        pump();
    }
}

void DownloadCoordinator::look()
{
    work();
    m_landing.look();
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
    const QVector<DownloadJob> &jobs = m_queue.jobs();
    return m_landing.isBusy() || std::any_of(jobs.begin(), jobs.end(), [this](const DownloadJob &job) {
        return job.isBusy(isAtService(job));
    });
}

/// Whether somebody is signed in where it comes from.
bool DownloadCoordinator::isAtService(const DownloadJob &job) const
{
    return m_session.isOpen() && (job.service.isEmpty() || m_session.isAt(job.service));
}

bool DownloadCoordinator::mayFetch()
{
    return m_landing.isReady() && m_session.isOpen();
}

void DownloadCoordinator::pump()
{
    if (!mayFetch()) {
        return;
    }
    const qint64 now = m_clock.elapsed();
    for (DownloadJob &job : m_queue.jobs()) {
        for (SeriesJob &series : job.series) {
            const bool isNext =
                !job.isStopped && isAtService(job) && series.isDue(now) && series.pending == 0;
            if (!m_lines.isFree() || (isNext && !begin(job, series))) {
                return;
            }
        }
    }
}

/// @return false where nothing can be begun at the moment
bool DownloadCoordinator::begin(const DownloadJob &job, SeriesJob &series)
{
    QSet<QString> present;
    if (!m_queue.present(series.uid, &present)) {
        return false;
    }
    if (!m_landing.hasRoom()) {
        m_queue.fail(job, series, {WebProblem::DiskFull, {}, 0}, m_clock.elapsed());
        return false;
    }
    if (m_queue.begin(job, series, present.size())) {
        m_lines.fetch({job.studyUid, series.uid}, present, series.isRecounted || !present.isEmpty());
    }
    return true;
}

void DownloadCoordinator::onReceived(const AskedSeries &asked, const QString &path)
{
    m_landing.add(asked, path);
    if (SeriesJob *series = m_queue.find(asked)) {
        series->receive();
        m_queue.find(asked.studyUid)->rate.add(m_clock.elapsed(), 0, 1);
    }
    if (!m_landing.hasRoom()) {
        m_lines.abort({});
    }
}

void DownloadCoordinator::onProgressed(const AskedSeries &asked, qint64 bytes)
{
    if (DownloadJob *job = m_queue.find(asked.studyUid)) {
        job->bytes += bytes;
        job->rate.add(m_clock.elapsed(), bytes, 0);
    }
}

void DownloadCoordinator::onFetched(
    const AskedSeries &asked, const QSet<QString> &listed, const WebFailure &failure)
{
    SeriesJob *series = m_queue.find(asked);
    if (!series) {
        return; // removed meanwhile
    }
    const DownloadJob &job = *m_queue.find(asked.studyUid);
    series->noteListed(listed);
    if (failure.isNone()) {
        series->failure = {};
        series->state = SeriesJob::State::Landing;
        m_queue.settle(job, *series);
    } else if (failure.problem == WebProblem::Unauthorized) {
        series->state = SeriesJob::State::Waiting;
        onRefused();
    } else {
        m_queue.fail(job, *series, failure, m_clock.elapsed());
    }
    wake();
}

/// The service does not accept the session any more.
void DownloadCoordinator::onRefused()
{
    if (m_session.isOpen()) {
        setSession({});
        emit sessionRefused();
    }
}

void DownloadCoordinator::onLanded(const QVector<LandedObject> &objects)
{
    for (const LandedObject &object : objects) {
        SeriesJob *series = m_queue.find(object.series);
        if (!series) {
            continue; // left by an earlier program, or of a study that was taken off the list
        }
        series->land(object.isTaken);
        m_hasImported = m_hasImported || object.isTaken;
        m_queue.settle(*m_queue.find(object.series.studyUid), *series);
    }
    wake();
}

void DownloadCoordinator::setSession(const CloudSession &session)
{
    m_session = session;
    if (session.isOpen()) {
        m_service = CloudSession::plainAddress(session.service.address);
    }
    m_lines.setService(session.service);
    m_queue.endPauses();
    wake();
}

void DownloadCoordinator::add(const DownloadStudy &study)
{
    DownloadJob &job = m_queue.add(study, m_service);
    for (SeriesJob &series : job.series) { // of a study that was removed, some may be on their way yet
        series.pending = m_landing.pending({job.studyUid, series.uid});
    }
    wake();
}

void DownloadCoordinator::stop(const QString &studyUid)
{
    if (DownloadJob *job = m_queue.find(studyUid)) {
        m_queue.stop(*job);
        m_lines.abort(studyUid);
        wake();
    }
}

void DownloadCoordinator::resume(const QString &studyUid)
{
    if (DownloadJob *job = m_queue.find(studyUid)) {
        m_queue.resume(*job);
        wake();
    }
}

void DownloadCoordinator::remove(const QString &studyUid)
{
    if (DownloadJob *job = m_queue.find(studyUid)) {
        job->isStopped = true;
        m_lines.abort(studyUid);
        m_queue.remove(studyUid);
        wake();
    }
}

void DownloadCoordinator::tell()
{
    QVector<DownloadTally> tallies;
    for (const DownloadJob &job : qAsConst(m_queue).jobs()) {
        tallies.append(job.tally(isAtService(job), m_clock.elapsed()));
    }
    emit told(tallies);
}
