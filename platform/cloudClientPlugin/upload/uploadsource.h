#pragma once

#include "uploadjudge.h"
#include "uploadlook.h"

/// What is to be sent, as the index and the disk have it at the moment. For one thread.
class UploadSource
{
public:
    UploadSource(QString databasePath, int waitMs);

    UploadStore &store() { return m_store; }
    /// What keeps a file from being sent; None where nothing does.
    UploadFault::Kind look(UploadFile *file);
    /// Asks the index once more, just before files are sent, and takes over what it says of them now.
    /// @param gone are those that do not wait any more
    /// @return false where it could not be asked: then nothing is to be sent
    bool confirm(QVector<QueuedFile> *files, QVector<QueuedFile> *gone);
    /// After an answer that may be about another path or another object: a file that has changed since it was
    /// entered has another try; one that is gone has none.
    void lookAgain(UploadFile *file, UploadJudge::Judgement *judgement);

private:
    UploadStore m_store;
    UploadLook m_look;
};
