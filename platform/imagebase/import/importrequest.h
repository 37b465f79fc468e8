#pragma once

#include <QStringList>

/// What an import does with a file: names it where it is, copies it into the store, or takes it: then it
/// leaves its place once its record is safe on the disk, and a file that is not indexed stays where it is.
enum class ImportMode { Reference = 0, Copy = 1, Take = 2 };

/// What happens where a file brings other bytes under a UID that the index knows.
enum class DuplicatePolicy { KeepOld = 0, TakeNew = 1 };

/// What an import is asked to do: a plain value.
struct ImportRequest
{
    QStringList paths; ///< files and folders, absolute or relative to the working directory
    ImportMode mode = ImportMode::Reference;
    DuplicatePolicy policy = DuplicatePolicy::KeepOld;
    QString databasePath; ///< the index file; the store of the copy mode lies beside it
    /// Whether a file that was taken is in the store, and its record in the index, after a power cut too. Off
    /// only where that does not matter, for speed.
    bool synced = true;
};
