#include "thumbnailstore.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSaveFile>
#include <QUrl>

#include <algorithm>
#include <vector>

namespace {

constexpr char folderSuffix[] = ".thumbnails";
constexpr char fileSuffix[] = ".png";
/// Pruning leaves some room, so that not every picture prunes.
constexpr double keptShare = 0.9;

/// Between the parts of a file's name; never within one, as instances are percent-encoded.
const QLatin1Char separator('+');
constexpr int nameParts = 3;

} // namespace

ThumbnailStore::ThumbnailStore(const QString &indexPath, qint64 limitBytes)
    : m_folder(indexPath + QLatin1String(folderSuffix))
    , m_limit(limitBytes)
{ }

/// The name tells the instance, so that sweep() can ask for it; folders of a few hundred files each.
QString ThumbnailStore::pathOf(const QString &instanceUid, const QFileInfo &file) const
{
    const QByteArray hash = QCryptographicHash::hash(instanceUid.toUtf8(), QCryptographicHash::Sha1).toHex();
    const QStringList name{QString::fromLatin1(QUrl::toPercentEncoding(instanceUid)),
        QString::number(file.size()), QString::number(file.lastModified().toMSecsSinceEpoch())};
    return QDir(m_folder).filePath(QString::fromLatin1(hash.left(2))) + QLatin1Char('/')
        + name.join(separator) + QLatin1String(fileSuffix);
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
    QDirIterator walk(m_folder, QDir::Files, QDirIterator::Subdirectories);
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
    QDirIterator walk(m_folder, QDir::Files, QDirIterator::Subdirectories);
    while (!stop && walk.hasNext()) {
        const QString path = walk.next();
        const QStringList name = walk.fileName().split(separator);
        const bool isOurs = name.size() == nameParts && walk.fileName().endsWith(QLatin1String(fileSuffix));
        const qint64 size = walk.fileInfo().size();
        if (isOurs && !isKnown(QUrl::fromPercentEncoding(name.first().toLatin1())) && QFile::remove(path)
            && m_bytes >= size) {
            m_bytes -= size;
        }
    }
}
