#include "downloadjob.h"

#include <QDateTime>

#include <algorithm>
#include <limits>

namespace {

using State = SeriesJob::State;

template <typename Is>
bool anyOf(const DownloadJob &job, const Is &is)
{
    return std::any_of(job.series.begin(), job.series.end(), is);
}

} // namespace

SeriesJob *DownloadJob::find(const QString &seriesUid)
{
    const auto found = std::find_if(
        series.begin(), series.end(), [&](const SeriesJob &one) { return one.uid == seriesUid; });
    return found == series.end() ? nullptr : &*found;
}

bool DownloadJob::isBusy(bool hasSession) const
{
    return anyOf(*this, [this, hasSession](const SeriesJob &one) {
        return one.pending > 0 || one.state == State::Fetching || one.state == State::Landing
            || (one.state == State::Waiting && !isStopped && hasSession);
    });
}

bool DownloadJob::hasFailed() const
{
    return anyOf(*this, [](const SeriesJob &one) { return one.state == State::Failed; });
}

void DownloadJob::askFor(const QVector<DownloadSeries> &wanted)
{
    for (const DownloadSeries &one : wanted) {
        SeriesJob *known = find(one.seriesUid);
        if (!known) {
            SeriesJob added;
            added.uid = one.seriesUid;
            series.append(added);
            known = &series.last();
        }
        known->askFor(one.expected);
    }
    tryAgain();
}

void DownloadJob::tryAgain()
{
    isStopped = false;
    for (SeriesJob &one : series) {
        one.tryAgain();
    }
}

DownloadState DownloadJob::state(bool hasSession, qint64 nowMs) const
{
    const auto is = [](State state) { return [state](const SeriesJob &one) { return one.state == state; }; };
    if (std::all_of(series.begin(), series.end(), is(State::Done))) {
        return DownloadState::Finished;
    }
    if (isStopped) {
        return DownloadState::Stopped;
    }
    if (anyOf(*this, is(State::Fetching))) {
        return DownloadState::Running;
    }
    if (anyOf(*this, is(State::Waiting))) {
        const bool isDue = anyOf(*this, [nowMs](const SeriesJob &one) { return one.isDue(nowMs); });
        return !hasSession ? DownloadState::NeedsSession
            : isDue        ? DownloadState::Waiting
                           : DownloadState::Retrying;
    }
    return anyOf(*this, is(State::Landing)) ? DownloadState::Indexing : DownloadState::Failed;
}

/// When the first of those that wait may be tried.
qint64 DownloadJob::dueMs() const
{
    qint64 first = std::numeric_limits<qint64>::max();
    for (const SeriesJob &one : series) {
        first = one.state == State::Waiting ? qMin(first, one.dueMs) : first;
    }
    return first;
}

DownloadTally DownloadJob::tally(bool hasSession, qint64 nowMs) const
{
    DownloadTally tally;
    tally.studyUid = studyUid;
    tally.label = label;
    tally.state = state(hasSession, nowMs);
    tally.series = series.size();
    tally.expected = 0;
    for (const SeriesJob &one : series) {
        tally.seriesDone += one.state == State::Done ? 1 : 0;
        tally.indexed += one.indexed;
        tally.refused += one.refused;
        tally.fetched += one.fetched();
        // A service may have announced fewer than came.
        const qint64 expected =
            one.state == State::Done ? one.fetched() : qMax<qint64>(one.expected, one.fetched());
        tally.expected =
            tally.expected < 0 || (one.expected < 0 && !one.isEnded()) ? -1 : tally.expected + expected;
        if (!one.failure.isNone() && one.state != State::Done) {
            tally.failure = one.failure;
        }
    }
    tally.bytes = bytes;
    if (tally.state == DownloadState::Retrying) {
        tally.nextTryMs = QDateTime::currentMSecsSinceEpoch() + dueMs() - nowMs;
    }
    if (tally.state == DownloadState::Running) {
        tally.bytesPerSecond = rate.bytesPerSecond(nowMs);
        tally.objectsPerSecond = rate.objectsPerSecond(nowMs);
        if (tally.expected >= 0 && tally.objectsPerSecond > 0) {
            tally.secondsLeft = qRound64(double(tally.expected - tally.fetched) / tally.objectsPerSecond);
        }
    }
    return tally;
}
