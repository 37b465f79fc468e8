#include "downloadqueue.h"

#include <algorithm>

DownloadQueue::DownloadQueue(const QString &databasePath)
    : m_list(databasePath)
{ }

bool DownloadQueue::load()
{
    m_isLoaded = m_isLoaded || m_list.load(&m_jobs);
    return m_isLoaded;
}

DownloadJob *DownloadQueue::find(const QString &studyUid)
{
    const auto job = std::find_if(
        m_jobs.begin(), m_jobs.end(), [&](const DownloadJob &one) { return one.studyUid == studyUid; });
    return job == m_jobs.end() ? nullptr : &*job;
}

SeriesJob *DownloadQueue::find(const AskedSeries &series)
{
    DownloadJob *job = find(series.studyUid);
    return job ? job->find(series.seriesUid) : nullptr;
}

DownloadJob &DownloadQueue::add(const DownloadStudy &study, const QString &service)
{
    DownloadJob *job = find(study.studyUid);
    if (!job) {
        m_jobs.append(DownloadJob{study.studyUid, study.label, {}, false, {}, {}, 0});
        job = &m_jobs.last();
    }
    if (!service.isEmpty()) {
        job->service = service;
    }
    job->askFor(study.series);
    m_list.add(*job);
    return *job;
}

void DownloadQueue::stop(DownloadJob &job)
{
    job.isStopped = true;
    m_list.setStopped(job);
}

void DownloadQueue::resume(DownloadJob &job)
{
    job.tryAgain();
    m_list.add(job); // with its series: a kill must not make them failed again
}

void DownloadQueue::remove(const QString &studyUid)
{
    const auto isIt = [&](const DownloadJob &one) { return one.studyUid == studyUid; };
    m_jobs.erase(std::remove_if(m_jobs.begin(), m_jobs.end(), isIt), m_jobs.end());
    m_list.remove(studyUid);
}

bool DownloadQueue::begin(const DownloadJob &job, SeriesJob &series, int held)
{
    const bool isBegun = series.begin(held);
    if (!isBegun) {
        m_list.setState(job, series);
    }
    return isBegun;
}

void DownloadQueue::fail(const DownloadJob &job, SeriesJob &series, const WebFailure &failure, qint64 nowMs)
{
    series.fail(failure, nowMs);
    if (failure.problem != WebProblem::Stopped) {
        m_list.setState(job, series);
    }
}

void DownloadQueue::settle(const DownloadJob &job, SeriesJob &series)
{
    QSet<QString> held;
    // Where the index cannot be asked, the next look does.
    if (series.hasLanded() && m_list.present(series.uid, &held) && series.settle(held)) {
        m_list.setState(job, series);
    }
}

template <typename Deed>
void DownloadQueue::forEach(const Deed &deed)
{
    for (DownloadJob &job : m_jobs) {
        for (SeriesJob &series : job.series) {
            deed(job, series);
        }
    }
}

void DownloadQueue::settleAll()
{
    forEach([this](const DownloadJob &job, SeriesJob &series) { settle(job, series); });
}

void DownloadQueue::endPauses()
{
    forEach([](const DownloadJob &, SeriesJob &series) { series.dueMs = 0; });
}

void DownloadQueue::forgetPending()
{
    forEach([](const DownloadJob &, SeriesJob &series) { series.pending = 0; });
    settleAll();
}
