#pragma once

#include "filestore.h"
#include "filewalker.h"

struct archive;
struct archive_entry;

/**
 * Unpacks a ZIP archive for an import: each member into a temporary file of the store, one after another.
 *
 * A member's name is only shown, never a path. Hostile archives are bounded: by how much they may grow, by
 * the room that is left on the disk, and by one level of archives within archives. What cannot be unpacked is
 * told like a file that the walk could not enter. One thread.
 */
class ArchiveReader
{
public:
    /// @param store and cancelled outlive this; sink takes a member, and answers false to end
    ArchiveReader(FileStore &store, const std::atomic<bool> &cancelled, FileWalker::Sink sink);

    /// By its name, and only then by its first bytes, so that other files cost nothing.
    static bool isArchive(const QByteArray &path);

    /// @return false where the sink ended it or the import was cancelled
    bool read(const WalkedFile &file);

private:
    bool readMembers(const QByteArray &path, const QString &label, bool isNested);
    bool readMember(archive *reader, archive_entry *entry, const QString &label, bool isNested);
    bool unpack(archive *reader, archive_entry *entry, WalkedFile *member);
    int copyData(archive *reader, int to, WalkedFile *member);
    bool refuse(const QString &label, FileReason reason, const QString &detail = {});

    FileStore &m_store;
    const std::atomic<bool> &m_cancelled;
    const FileWalker::Sink m_sink;
    QString m_archive; ///< the outermost one
    qint64 m_mayGrow = 0; ///< bytes that may still be unpacked
    qint64 m_untilLook = 0; ///< bytes until the room on the disk is looked at again
};
