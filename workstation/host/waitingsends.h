#pragma once

#include <QStringList>

class SendService;
struct RecordSelection;

/// Images that have been asked to be sent, have not been yet, and whose files a deletion would take away.
struct WaitingSends
{
    qint64 images = 0; ///< one that waits for two destinations counts once
    QStringList destinations; ///< as people call them

    /// Of the records' images. What a job has not listed yet is not known, and left out. GUI thread.
    static WaitingSends of(const RecordSelection &records, const SendService &sends);
};
