#pragma once

#include "uploadjob.h"

class UploadRecords;
class UploadSituation;

/// What is told of an upload: its numbers, why it stands where it does, and when it goes on. For one thread.
class UploadStanding
{
public:
    /// Both must outlive it.
    UploadStanding(const UploadSituation &situation, const UploadRecords &records);

    UploadTally of(const UploadJob &job) const;

private:
    UploadTally::State stateOf(const UploadJob &job) const;
    qint64 nextTryMs(const UploadJob &job) const;

    const UploadSituation &m_situation;
    const UploadRecords &m_records;
};
