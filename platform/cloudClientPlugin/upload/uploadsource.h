#pragma once

#include "uploadhealth.h"
#include "uploadjob.h"
#include "uploadjudge.h"
#include "uploadlook.h"

/// What is to be sent, as the index and the disk have it at the moment. For one thread.
class UploadSource
{
public:
    using Failed = std::function<void(const QueuedFile &, UploadFault::Kind)>;

    UploadSource(QString databasePath, int waitMs);

    /// Takes what goes into the next request out of an upload; empty where nothing can be sent now.
    /// @param failed hears of files that cannot be sent at all
    UploadBatch next(UploadJob &job, const UploadHealth &health, qint64 nowMs, const Failed &failed);
    /// After an answer that may be about another path or another object: a file that has changed since it was
    /// entered has another try; one that is gone has none.
    void lookAgain(UploadFile *file, UploadJudge::Judgement *judgement);

private:
    UploadFault::Kind look(UploadFile *file);
    void confirm(UploadJob &job, UploadBatch *batch);

    UploadStore m_store;
    UploadLook m_look;
};
