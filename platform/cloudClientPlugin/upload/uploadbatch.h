#pragma once

#include "uploadstore.h"

/// A file on its way, and how it fared until now.
struct QueuedFile
{
    UploadFile file;
    bool isAlone = false; ///< to be sent alone: a request with it was refused
    int tries = 0; ///< requests with it alone that came to nothing
    qint64 notBeforeMs = 0;
    qint64 troubleSinceMs = -1; ///< when it first was in a request that came to nothing
};

/// The files of one request; of one task.
struct UploadBatch
{
    qint64 task = 0;
    QVector<QueuedFile> files;
    quint64 healthyAt = 0; ///< the count of acknowledgements when it left
    quint64 session = 0; ///< as UploadHealth counts them

    bool isEmpty() const { return files.isEmpty(); }
};
