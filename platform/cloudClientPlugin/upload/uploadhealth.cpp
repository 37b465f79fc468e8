#include "uploadhealth.h"

#include "uploadjudge.h"

namespace {

constexpr qint64 wellMs = 60000; ///< what was acknowledged since says that it is not the service

} // namespace

void UploadHealth::beginSession(bool isElsewhere)
{
    ++m_session;
    m_trouble.clear();
    m_isProven = m_isProven && !isElsewhere;
}

bool UploadHealth::wasWellAt(qint64 ms) const
{
    return m_isProven && m_acknowledgedMs + wellMs > ms;
}

/// Others that were acknowledged meanwhile say that the service is well; so do those before, where nothing
/// but objects that have failed before is left. A service that is busy is believed in any case.
void UploadHealth::note(const UploadBatch &batch, const StoreAnswer &answer, bool isLeft, qint64 nowMs)
{
    if (batch.session != m_session) {
        return;
    }
    noteAcknowledged(batch, answer, nowMs);
    const WebFailure &failure = answer.failure;
    const bool isOfObject =
        isLeft && batch.files.size() == 1 && UploadJudge::maySuspect(failure) && wasWellAt(nowMs);
    const bool isWell = m_acknowledgements != batch.healthyAt && failure.problem != WebProblem::Busy;
    if (UploadJudge::isOfService(failure) && !isWell && !isOfObject) {
        m_trouble.note(failure, nowMs);
    }
}

void UploadHealth::noteAcknowledged(const UploadBatch &batch, const StoreAnswer &answer, qint64 nowMs)
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
    m_acknowledgedMs = nowMs;
    m_isProven = true;
    // What a busy service still takes of what was on its way does not end its pause.
    if (trouble().problem != WebProblem::Busy || !mustWait(nowMs)) {
        m_trouble.clear();
    }
    m_pace.acknowledged(bytes, stored, nowMs);
}
