#include "seriesjob.h"

namespace {

constexpr qint64 firstPauseMs = 1000;
constexpr qint64 longestPauseMs = 30'000;
constexpr int mostDoublings = 10;
constexpr int mostBadAnswers = 8; ///< in a row, and nothing between them
constexpr int mostVainRounds = 5; ///< in a row

/// Whether it may pass: troubles of the service, the way there or the disk at any time.
bool isPassing(const WebFailure &failure, int attempts)
{
    const bool mayBeCut = failure.problem == WebProblem::BadAnswer && attempts < mostBadAnswers;
    return mayBeCut || failure.isPassing() || failure.problem == WebProblem::DiskFull;
}

} // namespace

void SeriesJob::askFor(int expectedNow)
{
    if (state == State::Done) { // there may be more of it since
        state = State::Waiting;
    }
    expected = expectedNow >= 0 ? expectedNow : expected;
}

void SeriesJob::tryAgain()
{
    if (state == State::Failed) {
        state = State::Waiting;
    }
    isRecounted = false;
    attempts = 0;
    vainRounds = 0;
    heldBefore = -1;
    dueMs = 0;
}

bool SeriesJob::begin(int held)
{
    vainRounds = held > heldBefore ? 0 : vainRounds + (hasReceived ? 1 : 0);
    heldBefore = held;
    hasReceived = false;
    indexed = held;
    if (vainRounds >= mostVainRounds) {
        state = State::Failed;
        failure = {WebProblem::Incomplete, {}, 0};
        return false;
    }
    state = State::Fetching;
    refused = 0;
    listed.clear();
    return true;
}

void SeriesJob::receive()
{
    ++pending;
    hasReceived = true;
}

void SeriesJob::land(bool isTaken)
{
    --pending;
    ++(isTaken ? indexed : refused);
    attempts = isTaken ? 0 : attempts;
}

void SeriesJob::noteListed(const QSet<QString> &objects)
{
    listed = objects;
    isRecounted = isRecounted || !listed.isEmpty();
    if (!listed.isEmpty()) { // a shorter list does not take back what was announced
        expected = qMax(expected, listed.size());
    }
}

void SeriesJob::fail(const WebFailure &why, qint64 nowMs)
{
    state = State::Waiting;
    if (why.problem == WebProblem::Stopped) {
        return;
    }
    failure = why;
    ++attempts;
    if (isPassing(why, attempts)) {
        const qint64 pause = firstPauseMs << qMin(attempts - 1, mostDoublings);
        dueMs = nowMs + qMin(pause, longestPauseMs);
    } else {
        state = State::Failed;
    }
}

bool SeriesJob::settle(const QSet<QString> &held)
{
    indexed = held.size();
    if (isComplete(held)) {
        state = State::Done;
        listed.clear();
    } else if (!isRecounted) {
        isRecounted = true; // the list says what is missing
        state = State::Waiting;
    } else {
        state = State::Failed;
        failure = {WebProblem::Incomplete, {}, 0};
    }
    return isEnded();
}

/// Whether what the index has is all that the service has announced or lists.
bool SeriesJob::isComplete(const QSet<QString> &held) const
{
    const bool isAll = listed.isEmpty() ? expected >= 0 || refused == 0 : held.contains(listed);
    return isAll && !held.isEmpty() && held.size() >= expected;
}
