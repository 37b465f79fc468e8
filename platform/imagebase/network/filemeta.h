#pragma once

#include <QByteArray>

/// What a file says before a data set that was received.
struct FileMetaValues
{
    QByteArray sopClass;
    QByteArray sopInstance;
    QByteArray transferSyntax;
    QByteArray sourceAeTitle; ///< of whom it came from; may be empty
};

/// Preamble, mark and file meta information for a data set that follows as it was sent. Written here and not
/// by DCMTK, which would want to know the transfer syntax.
QByteArray fileMeta(const FileMetaValues &values);
