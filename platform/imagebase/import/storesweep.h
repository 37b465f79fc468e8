#pragma once

#include "imagebase_export.h"

#include <QString>
#include <QStringList>

#include <atomic>

/// What a sweep has found in the store that no record names.
struct StoreSweep
{
    QStringList removed;
    QStringList left; ///< files that could not be removed, or that might belong to somebody else
};

/**
 * Removes the files of the store whose record is gone, as a kill or a folder without permission leaves them,
 * and the folders that this empties. Blocks for as long as the walk takes, on connections of its own: for a
 * worker thread.
 *
 * Never touched is what others are about to enter: names that begin with a dot, such as the folder of
 * temporary files, and every file that has a record once the write lock is held, since a file comes to its
 * place only within a transaction. Links are not followed. Nothing is removed, and all is left, where another
 * index lies in the same folder, as it shares the store, and where the index has fewer images behind it than
 * at an earlier sweep: an older copy has been put in its place, and the files are all that there is of its
 * later images.
 *
 * @param stop ends it early when it becomes true
 */
IMAGEBASE_EXPORT StoreSweep sweepStore(const QString &databasePath, const std::atomic<bool> &stop);
