#include "thumbnailstore.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <vector>

namespace {

/// Pruning leaves some room, so that not every picture prunes.
constexpr double keptShare = 0.9;

} // namespace

ThumbnailStore::ThumbnailStore(const QString &indexPath, qint64 limitBytes)
    : m_files(indexPath)
    , m_limit(limitBytes)
{ }

QImage ThumbnailStore::find(const QString &instanceUid, const QFileInfo &file) const
{
    return QImage(m_files.pathOf(instanceUid, file), "PNG");
}

void ThumbnailStore::put(const QString &instanceUid, const QFileInfo &file, const QImage &picture)
{
    const QString path = m_files.pathOf(instanceUid, file);
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
    if (m_bytes >= 0) {
        m_bytes += size;
    }
}

bool ThumbnailStore::wantsPruning() const
{
    return m_bytes < 0 || m_bytes > m_limit;
}

void ThumbnailStore::prune()
{
    struct File
    {
        QString path;
        qint64 size;
        QDateTime time;
    };
    std::vector<File> files;
    qint64 bytes = 0;
    QDirIterator walk(folder(), QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        files.push_back({path, walk.fileInfo().size(), walk.fileInfo().lastModified()});
        bytes += files.back().size;
    }
    std::sort(files.begin(), files.end(), [](const File &a, const File &b) { return a.time < b.time; });
    const qint64 mostBytes = bytes > m_limit ? qint64(double(m_limit) * keptShare) : m_limit;
    for (auto file = files.begin(); bytes > mostBytes && file != files.end(); ++file) {
        if (QFile::remove(file->path)) {
            bytes -= file->size;
        }
    }
    m_bytes = bytes;
}

void ThumbnailStore::sweep(
    const std::function<bool(const QString &instanceUid)> &isKnown, const std::atomic<bool> &stop)
{
    QDirIterator walk(folder(), QDir::Files, QDirIterator::Subdirectories);
    while (!stop && walk.hasNext()) {
        const QString path = walk.next();
        const QString instanceUid = ThumbnailFiles::instanceOf(walk.fileName());
        const qint64 size = walk.fileInfo().size();
        if (!instanceUid.isNull() && !isKnown(instanceUid) && QFile::remove(path) && m_bytes >= size) {
            m_bytes -= size;
        }
    }
}
