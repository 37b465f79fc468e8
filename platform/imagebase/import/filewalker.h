#pragma once

#include "importreport.h"

#include <QByteArray>
#include <QSet>

#include <functional>
#include <memory>
#include <vector>

/// What tells one version of a file from another.
struct FileStamp
{
    qint64 size = 0;
    qint64 time = 0; ///< last modification, in nanoseconds
    quint64 inode = 0;

    bool operator==(const FileStamp &other) const
    {
        return size == other.size && time == other.time && inode == other.inode;
    }
};

FileStamp stampOf(const struct stat &status);

struct ArchiveMember;

/// A file that the walk met: either worth reading, or with the reason why not.
struct WalkedFile
{
    QByteArray path; ///< absolute, in the system's bytes
    FileStamp stamp;
    FileReason reason = FileReason::None;
    QString detail;
    std::shared_ptr<ArchiveMember> member; ///< where it comes out of an archive: path is its label then
    int systemError = 0; ///< errno of a member that could not be unpacked
};

/**
 * Lists files and folders, depth first and sorted by name, so that the same folder always comes in the same
 * order.
 *
 * Hidden entries, links that lead back, broken links, special files and folders without permission are
 * reported with their reason and not entered; a file is met once for each path that the walk was given. Used
 * on one thread.
 */
class FileWalker
{
public:
    /// Takes a file; answers false to end the walk.
    using Sink = std::function<bool(WalkedFile)>;

    /// @param excludedFolder a folder that is not entered (the store), in the system's bytes; may be empty
    FileWalker(QByteArray excludedFolder, Sink sink);

    /// Walks one named file or folder. @return false where the sink ended it
    bool walk(const QByteArray &path);

private:
    bool visitEntry(const QByteArray &path, std::vector<QByteArray> *folders);
    bool refuse(const QByteArray &path, FileReason reason, int systemError = 0);
    bool enterOnce(quint64 device, quint64 inode);

    QByteArray m_excluded;
    Sink m_sink;
    QSet<QPair<quint64, quint64>> m_entered;
};
