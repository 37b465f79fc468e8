#pragma once

#include "uploadtally.h"

#include <QStringList>

/// What the index says of an upload.
struct UploadRow
{
    qint64 id = 0;
    QString service;
    QString patientName;
    QStringList series;
    int files = 0;
    int stored = 0;
    int failed = 0;
    qint64 bytes = 0;
    qint64 bytesStored = 0;

    int waiting() const { return files - stored - failed; }
};

/// A file that waits.
struct UploadFile
{
    qint64 id = 0;
    QString path;
    QString sopInstance; ///< empty while nobody has asked the file
    qint64 bytes = 0;
    QString version{}; ///< what the index said of it when it was sent; null where it does not know it
};

/// What became of a file: stored where there is no fault.
struct UploadOutcome
{
    qint64 task = 0;
    UploadFile file;
    UploadFault::Kind fault = UploadFault::Kind::None;
    int reason = 0; ///< of a failure or of a warning
    WebFailure failure;
    int tries = 0;
};
