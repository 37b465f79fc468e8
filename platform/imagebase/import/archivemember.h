#pragma once

#include "unpackedahead.h"

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
        if (m_ahead) {
            m_ahead->add(-m_bytes);
        }
    }
    /// Counts its bytes for as long as it lives.
    void countIn(UnpackedAhead *ahead, qint64 bytes)
    {
        m_ahead = ahead;
        m_bytes = bytes;
        m_ahead->add(bytes);
    }
    ArchiveMember(const ArchiveMember &) = delete;
    ArchiveMember &operator=(const ArchiveMember &) = delete;

    const QString archive; ///< the file that the import has met
    const QByteArray path; ///< of the temporary file; empty where there is none

private:
    UnpackedAhead *m_ahead = nullptr;
    qint64 m_bytes = 0;
};
