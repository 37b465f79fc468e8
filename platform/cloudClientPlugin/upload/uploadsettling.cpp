#include "uploadsettling.h"

#include "uploadrecords.h"
#include "uploadsituation.h"
#include "uploadsource.h"

using UploadJudge::Deed;
using UploadJudge::Judgement;

UploadSettling::UploadSettling(const UploadSituation &situation, UploadSource &source, UploadRecords &records)
    : m_situation(situation)
    , m_source(source)
    , m_records(records)
{ }

void UploadSettling::settle(UploadJob &job, const UploadBatch &batch, const StoreAnswer &answer)
{
    const bool wasAlone = batch.files.size() == 1;
    for (int number = 0; number < batch.files.size(); ++number) {
        const QueuedFile &file = batch.files[number];
        const bool isHealthy =
            file.troubleSinceMs >= 0 && m_situation.health().wasWellAt(file.troubleSinceMs);
        settle(job, file,
            UploadJudge::judge(file, answer.verdicts.value(number), answer.failure, wasAlone, isHealthy),
            wasAlone);
    }
}

void UploadSettling::settle(UploadJob &job, QueuedFile file, Judgement judgement, bool wasAlone)
{
    if (judgement.deed == Deed::LookAgain) {
        m_source.lookAgain(&file.file, &judgement);
    }
    if (judgement.deed == Deed::Record) {
        record(job, file, judgement);
        return;
    }
    job.setOnItsWay(-1);
    if (judgement.deed == Deed::AgainAlone) {
        noteTrouble(&file, wasAlone);
    }
    if (!job.isCancelled) {
        job.giveBack(file);
    }
}

void UploadSettling::noteTrouble(QueuedFile *file, bool wasAlone) const
{
    file->isAlone = true;
    if (file->troubleSinceMs < 0) {
        file->troubleSinceMs = m_situation.nowMs();
    }
    if (wasAlone) {
        file->notBeforeMs = m_situation.nowMs() + UploadTrouble::pauseAfter(file->tries++);
    }
}

void UploadSettling::fail(UploadJob &job, const QueuedFile &file, UploadFault::Kind fault)
{
    job.setOnItsWay(1); // until the index has taken it
    record(job, file, {Deed::Record, fault, 0, {}});
}

void UploadSettling::record(const UploadJob &job, const QueuedFile &file, const Judgement &judgement)
{
    m_records.record({job.id(), file.file, judgement.fault, judgement.reason, judgement.failure, file.tries});
}
