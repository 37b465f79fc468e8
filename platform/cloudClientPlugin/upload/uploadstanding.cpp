#include "uploadstanding.h"

#include "uploadrecords.h"
#include "uploadsituation.h"

#include <QDateTime>

UploadStanding::UploadStanding(const UploadSituation &situation, const UploadRecords &records)
    : m_situation(situation)
    , m_records(records)
{ }

UploadTally UploadStanding::of(const UploadJob &job) const
{
    UploadTally tally = job.tally(m_situation.nowMs());
    tally.state = stateOf(job);
    tally.trouble = m_situation.health().trouble();
    tally.nextTryMs = nextTryMs(job);
    return tally;
}

UploadTally::State UploadStanding::stateOf(const UploadJob &job) const
{
    using State = UploadTally::State;
    if (job.isOver()) {
        return State::Finished;
    }
    if (job.isCancelled) {
        return State::Cancelled;
    }
    if (!m_situation.isOwner() || m_records.isRefusing()) {
        return State::Paused;
    }
    if (!job.isEntered()) {
        return State::Listing;
    }
    if (!m_situation.isRunnable(job)) {
        return State::NeedsSession;
    }
    return m_situation.health().isInTrouble() ? State::Retrying : State::Running;
}

qint64 UploadStanding::nextTryMs(const UploadJob &job) const
{
    return QDateTime::currentMSecsSinceEpoch() + qMax(m_situation.health().waitsUntilMs(), job.dueMs())
        - m_situation.nowMs();
}
