#pragma once

#include <QStringList>

enum class ImportMode { Reference = 0, Copy = 1 };

/// What happens where a file brings other bytes under a UID that the index knows.
enum class DuplicatePolicy { KeepOld = 0, TakeNew = 1 };

/// What an import is asked to do: a plain value.
struct ImportRequest
{
    QStringList paths; ///< files and folders, absolute or relative to the working directory
    ImportMode mode = ImportMode::Reference;
    DuplicatePolicy policy = DuplicatePolicy::KeepOld;
    QString databasePath; ///< the index file; the store of the copy mode lies beside it
};
