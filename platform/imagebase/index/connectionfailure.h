#pragma once

#include <QString>

/// Why the index could not be opened. Whoever has a screen makes a sentence of it.
struct ConnectionFailure
{
    enum class Reason {
        None,
        FolderMissing, ///< the folder of the file does not exist and cannot be created
        CannotOpen, ///< the system refuses to open the file
        ReadOnly, ///< the file or its folder cannot be written
        Locked, ///< another program holds it
        NotADatabase, ///< some other kind of file
        Damaged,
        Foreign, ///< a database, but not an index of this program
        Newer, ///< an index of a newer version of this program
        DiskFull,
        UpgradeFailed
    };
    Reason reason = Reason::None;
    QString path; ///< the index file
    QString detail; ///< the database's own words, may be empty
};
