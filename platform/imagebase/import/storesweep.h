#pragma once

#include "imagebase_export.h"

#include <QString>
#include <QStringList>

#include <atomic>

/// Why a store is left as it is, though it holds files that no record names.
enum class StoreKept : quint8 {
    No,
    NotMarked, ///< nothing says which index the store belongs to
    OtherIndex, ///< it belongs to another one
    Shared, ///< another index lies in the same folder
    OlderIndex, ///< an older copy of the index has been put in its place
    Elsewhere, ///< records name copies in other places: the folder was renamed, or is reached by another name
    NoRecords ///< the index has no copies at all
};

/// What a sweep has found in the store that no record names.
struct StoreSweep
{
    QStringList removed; ///< the places that these files had
    QString removedTo; ///< the folder that holds them now, in the same order below it
    QStringList left; ///< files that could not be removed, or that are kept
    StoreKept kept = StoreKept::No;
};

/**
 * Takes files whose record is gone, as a kill or a folder without permission leaves them, out of the store's
 * order: into store/.removed/DATE, where they stay for 30 days. Blocks for as long as the walk takes, on
 * connections of its own: for a worker thread.
 *
 * Only what has the name and place of a copied file counts; folders whose names begin with a dot are others',
 * and links are not followed. Every file that has a record once the write lock is held stays, since a file
 * comes to its place only within a transaction. Nothing is touched, and all is left, unless the store's mark
 * says that the store is this index's own and the index no older than the store; StoreKept has all reasons.
 *
 * @param others paths of databases of the program that may lie beside the index and are none themselves
 * @param stop ends it early when it becomes true
 */
IMAGEBASE_EXPORT StoreSweep sweepStore(
    const QString &databasePath, const QStringList &others, const std::atomic<bool> &stop);
