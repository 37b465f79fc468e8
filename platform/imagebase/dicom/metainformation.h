#pragma once

#include "elementcursor.h"

#include <QByteArray>

/// What a file says of the data set that follows.
struct MetaInformation
{
    QByteArray sopClass;
    QByteArray sopInstance;
    QByteArray transferSyntax;
    qint64 end = 0; ///< where the data set begins; 0 where the file has no meta information
};

/// The UID that an element holds; empty where it is none.
QByteArray uidAt(FileWindow &file, const ElementPlace &element);
/// Reads the group of meta information at a file's beginning; malformed UIDs are left out.
MetaInformation readMetaInformation(FileWindow &file);
