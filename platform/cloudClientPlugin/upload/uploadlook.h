#pragma once

#include "dicomreader.h"
#include "uploadstore.h"

/// Looks at a file before it is sent. For one thread.
class UploadLook
{
public:
    /// What keeps a file from being sent; None where nothing does. A file that nobody has asked for its UID
    /// yet has one then.
    UploadFault::Kind look(UploadFile *file);
    /// The UID that the file itself has; empty where it has none.
    QString instanceOf(const QString &path);

private:
    DicomReader m_reader;
};
