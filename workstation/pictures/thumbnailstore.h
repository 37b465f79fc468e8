#pragma once

#include <QImage>
#include <QMutex>
#include <QString>
#include <QStringList>

class QFileInfo;

/**
 * Small pictures on disk, in a folder beside the index. A picture belongs to an instance and to the file that
 * it was made from: where that file changes the picture counts as not there. The oldest go where the folder
 * grows beyond its limit. Where the folder cannot be written there is no cache, and nobody is told.
 *
 * May be used by several threads at a time, and by several programs.
 */
class ThumbnailStore
{
public:
    static constexpr qint64 defaultLimit = qint64(512) * 1024 * 1024;

    explicit ThumbnailStore(const QString &indexPath, qint64 limitBytes = defaultLimit);

    QString folder() const { return m_folder; }
    /// Null where there is none.
    QImage find(const QString &instanceUid, const QFileInfo &file) const;
    void put(const QString &instanceUid, const QFileInfo &file, const QImage &picture);
    /// Forgets all pictures of these instances.
    void remove(const QStringList &instanceUids);

private:
    QString pathOf(const QString &instanceUid, const QFileInfo &file) const;
    qint64 pruned(qint64 mostBytes) const;

    const QString m_folder;
    const qint64 m_limit;
    QMutex m_mutex;
    qint64 m_bytes = -1; ///< in the folder, as far as this object knows; -1 before it has looked
};
