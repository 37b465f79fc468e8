#include "uploadjob.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int takenAtOnce = 256;

} // namespace

UploadJob::UploadJob(qint64 id, QString service, int files)
    : m_id(id)
    , m_service(std::move(service))
{
    m_row.id = id;
    m_row.files = files;
}

void UploadJob::setRow(const UploadRow &row)
{
    isChanged = isChanged || !m_isEntered || row.stored != m_row.stored || row.failed != m_row.failed;
    m_row = row;
    m_isEntered = true;
}

/// The first one whose time has come.
bool UploadJob::takeFrom(std::deque<QueuedFile> &queue, qint64 nowMs, QueuedFile *next)
{
    const auto ready = std::find_if(
        queue.begin(), queue.end(), [nowMs](const QueuedFile &file) { return file.notBeforeMs <= nowMs; });
    if (ready == queue.end()) {
        return false;
    }
    *next = *ready;
    queue.erase(ready);
    return true;
}

void UploadJob::takeFresh(UploadStore &store)
{
    for (const UploadFile &file : store.waiting(m_id, m_cursor, takenAtOnce)) {
        m_cursor = file.id;
        if (!m_held.contains(file.id)) {
            m_held.insert(file.id);
            m_fresh.push_back({file, false, 0, 0, -1});
        }
    }
}

bool UploadJob::takeNext(UploadStore &store, qint64 nowMs, bool mayBeSuspect, QueuedFile *next)
{
    if (mayBeSuspect && takeFrom(m_again, nowMs, next)) {
        return true;
    }
    if (m_fresh.empty()) {
        takeFresh(store);
    }
    if (m_fresh.empty() && m_row.waiting() > m_held.size()) { // what waits again lies before the cursor
        rewind();
        takeFresh(store);
    }
    return takeFrom(m_fresh, nowMs, next) || takeFrom(m_again, nowMs, next);
}

void UploadJob::giveBack(const QueuedFile &file)
{
    if (file.isAlone || file.tries > 0) {
        m_again.push_back(file);
    } else {
        m_fresh.push_front(file);
    }
}

qint64 UploadJob::dueMs() const
{
    const auto first = std::min_element(m_again.begin(), m_again.end(),
        [](const QueuedFile &one, const QueuedFile &other) { return one.notBeforeMs < other.notBeforeMs; });
    return hasFresh() || first == m_again.end() ? 0 : first->notBeforeMs;
}

void UploadJob::hurry()
{
    for (QueuedFile &file : m_again) {
        file.notBeforeMs = 0;
    }
}

void UploadJob::forget(const UploadOutcome &outcome, qint64 nowMs)
{
    --m_onTheirWay;
    m_held.remove(outcome.file.id);
    if (outcome.fault == UploadFault::Kind::None) {
        m_rate.add(nowMs, outcome.file.bytes, 1);
    }
}

UploadTally UploadJob::tally(qint64 nowMs) const
{
    UploadTally tally;
    tally.all = m_row.files;
    tally.succeeded = m_row.stored;
    tally.failed = m_row.failed;
    tally.inFlight = qBound(0, m_onTheirWay, m_row.waiting());
    tally.waiting = m_row.waiting() - tally.inFlight;
    tally.bytesAll = m_row.bytes;
    tally.bytesDone = m_row.bytesStored;
    tally.bytesPerSecond = m_row.waiting() > 0 ? m_rate.bytesPerSecond(nowMs) : 0;
    if (tally.bytesPerSecond > 1) {
        const double left = double(m_row.bytes - m_row.bytesStored) / tally.bytesPerSecond;
        tally.secondsLeft = static_cast<int>(std::ceil(std::min(left, 1e9)));
    }
    return tally;
}
