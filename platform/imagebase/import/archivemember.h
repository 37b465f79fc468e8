#pragma once

#include <QByteArray>
#include <QString>

#include <unistd.h>

/// A member of an archive that an import has unpacked into a temporary file, which goes with this object
/// unless it was renamed to its place before.
struct ArchiveMember
{
    ArchiveMember(QString ofArchive, QByteArray temporaryPath)
        : archive(std::move(ofArchive))
        , path(std::move(temporaryPath))
    { }
    ~ArchiveMember()
    {
        if (!path.isEmpty()) {
            unlink(path.constData());
        }
    }
    ArchiveMember(const ArchiveMember &) = delete;
    ArchiveMember &operator=(const ArchiveMember &) = delete;

    const QString archive; ///< the file that the import has met
    const QByteArray path; ///< of the temporary file; empty where there is none
};
