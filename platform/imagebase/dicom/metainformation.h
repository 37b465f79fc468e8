#pragma once

#include "filewindow.h"

#include <QByteArray>

/// What a file says of the data set that follows.
struct MetaInformation
{
    QByteArray sopClass;
    QByteArray sopInstance;
    QByteArray transferSyntax;
    qint64 end = 0; ///< where the data set begins; 0 where the file has no meta information
};

/// Reads the group of meta information at a file's beginning; malformed UIDs are left out.
MetaInformation readMetaInformation(FileWindow &file);
