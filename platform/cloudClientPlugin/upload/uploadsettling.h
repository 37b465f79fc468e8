#pragma once

#include "storerequest.h"
#include "uploadjob.h"
#include "uploadjudge.h"

class UploadRecords;
class UploadSituation;
class UploadSource;

/**
 * Does with files what their answers mean for them: what is decided is recorded, all else goes back to its
 * upload, with its troubles noted. For one thread.
 */
class UploadSettling
{
public:
    /// All must outlive it.
    UploadSettling(const UploadSituation &situation, UploadSource &source, UploadRecords &records);

    /// The files of a request that has come back.
    void settle(UploadJob &job, const UploadBatch &batch, const StoreAnswer &answer);
    /// A file that cannot be sent at all.
    void fail(UploadJob &job, const QueuedFile &file, UploadFault::Kind fault);

private:
    void settle(UploadJob &job, QueuedFile file, UploadJudge::Judgement judgement, bool wasAlone);
    void record(const UploadJob &job, const QueuedFile &file, const UploadJudge::Judgement &judgement);
    void noteTrouble(QueuedFile *file, bool wasAlone) const;

    const UploadSituation &m_situation;
    UploadSource &m_source;
    UploadRecords &m_records;
};
