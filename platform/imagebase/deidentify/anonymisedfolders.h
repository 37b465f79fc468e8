#pragma once

#include "imagebase_export.h"

#include <QDateTime>
#include <QString>

#include <functional>

/// Where anonymous copies lie that are to be sent or uploaded: a folder beside the index, with one in it for
/// each run. Whoever sends reads them later, so they stay for a while.
namespace AnonymisedFolders {

inline constexpr int daysKept = 30;

/// The folder for an index, whether or not it exists.
IMAGEBASE_EXPORT QString base(const QString &databasePath);

/// Removes the runs that are older than that and that nobody needs. @param isNeeded asked for each old run
/// with its folder: whether something that still waits names a file in it
/// @return how many runs went
IMAGEBASE_EXPORT int sweep(const QString &databasePath, const QDateTime &now,
    const std::function<bool(const QString &folder)> &isNeeded);

} // namespace AnonymisedFolders
