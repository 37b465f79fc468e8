#pragma once

#include "thumbnailfiles.h"

#include <QImage>
#include <QString>

#include <atomic>
#include <functional>

class QFileInfo;

/**
 * Small pictures on disk, in a folder beside the index. A picture belongs to an instance and to the file that
 * it was made from: where that file changes the picture counts as not there. Where the folder cannot be
 * written there is no cache, and nobody is told.
 *
 * May be used by several threads at a time, and by several programs.
 */
class ThumbnailStore
{
public:
    static constexpr qint64 defaultLimit = qint64(512) * 1024 * 1024;

    explicit ThumbnailStore(const QString &indexPath, qint64 limitBytes = defaultLimit);

    QString folder() const { return m_files.folder(); }
    /// Null where there is none.
    QImage find(const QString &instanceUid, const QFileInfo &file) const;
    void put(const QString &instanceUid, const QFileInfo &file, const QImage &picture);

    /// Whether prune() has something to do: the folder is too large, or nobody has looked yet.
    bool wantsPruning() const;
    /// Removes the oldest pictures where the folder has grown beyond its limit. Looks through all of it.
    void prune();
    /// Removes the pictures of all instances that are not known, until stop is set.
    void sweep(const std::function<bool(const QString &instanceUid)> &isKnown, const std::atomic<bool> &stop);

private:
    const ThumbnailFiles m_files;
    const qint64 m_limit;
    std::atomic<qint64> m_bytes{-1}; ///< in the folder, as far as this object knows; -1 before it has looked
};
