#include "thumbnailstore.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <vector>

namespace {

constexpr char folderSuffix[] = ".thumbnails";
constexpr char fileSuffix[] = ".png";
/// Pruning leaves some room, so that not every picture prunes.
constexpr double keptShare = 0.9;

QString hashOf(const QString &instanceUid)
{
    return QString::fromLatin1(
        QCryptographicHash::hash(instanceUid.toUtf8(), QCryptographicHash::Sha1).toHex());
}

} // namespace

ThumbnailStore::ThumbnailStore(const QString &indexPath, qint64 limitBytes)
    : m_folder(indexPath + QLatin1String(folderSuffix))
    , m_limit(limitBytes)
{ }

QString ThumbnailStore::pathOf(const QString &instanceUid, const QFileInfo &file) const
{
    const QString hash = hashOf(instanceUid);
    return QStringLiteral("%1/%2/%3-%4-%5")
               .arg(m_folder, hash.left(2), hash)
               .arg(file.size())
               .arg(file.lastModified().toMSecsSinceEpoch())
        + QLatin1String(fileSuffix);
}

QImage ThumbnailStore::find(const QString &instanceUid, const QFileInfo &file) const
{
    return QImage(pathOf(instanceUid, file), "PNG");
}

void ThumbnailStore::put(const QString &instanceUid, const QFileInfo &file, const QImage &picture)
{
    const QString path = pathOf(instanceUid, file);
    if (!QDir().mkpath(QFileInfo(path).path())) {
        return;
    }
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly) || !picture.save(&out, "PNG")) {
        return;
    }
    const qint64 size = out.size();
    if (!out.commit()) {
        return;
    }
    const QMutexLocker lock(&m_mutex);
    m_bytes = m_bytes < 0 ? pruned(m_limit) : m_bytes + size;
    if (m_bytes > m_limit) {
        m_bytes = pruned(qint64(m_limit * keptShare));
    }
}

/// Removes the oldest until the rest fits. @return the bytes of the rest
qint64 ThumbnailStore::pruned(qint64 mostBytes) const
{
    struct File
    {
        QString path;
        qint64 size;
        QDateTime time;
    };
    std::vector<File> files;
    qint64 bytes = 0;
    QDirIterator walk(m_folder, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        files.push_back({path, walk.fileInfo().size(), walk.fileInfo().lastModified()});
        bytes += files.back().size;
    }
    std::sort(files.begin(), files.end(), [](const File &a, const File &b) { return a.time < b.time; });
    for (auto file = files.begin(); bytes > mostBytes && file != files.end(); ++file) {
        if (QFile::remove(file->path)) {
            bytes -= file->size;
        }
    }
    return bytes;
}

void ThumbnailStore::remove(const QStringList &instanceUids)
{
    for (const QString &uid : instanceUids) {
        const QString hash = hashOf(uid);
        QDir folder(m_folder + QLatin1Char('/') + hash.left(2));
        for (const QString &name : folder.entryList({hash + QLatin1Char('*')}, QDir::Files)) {
            folder.remove(name);
        }
    }
}
