#include "thumbnailfiles.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace {

constexpr char folderSuffix[] = ".thumbnails";
constexpr char fileSuffix[] = ".png";

/// Between the parts of a file's name; never within one, as instances are percent-encoded.
const QLatin1Char separator('+');
constexpr int nameParts = 3;

} // namespace

ThumbnailFiles::ThumbnailFiles(const QString &indexPath)
    : m_folder(indexPath + QLatin1String(folderSuffix))
{ }

QString ThumbnailFiles::folderOf(const QString &instanceUid) const
{
    const QByteArray hash = QCryptographicHash::hash(instanceUid.toUtf8(), QCryptographicHash::Sha1).toHex();
    return QDir(m_folder).filePath(QString::fromLatin1(hash.left(2)));
}

QString ThumbnailFiles::pathOf(const QString &instanceUid, const QFileInfo &file) const
{
    const QStringList name{QString::fromLatin1(QUrl::toPercentEncoding(instanceUid)),
        QString::number(file.size()), QString::number(file.lastModified().toMSecsSinceEpoch())};
    return folderOf(instanceUid) + QLatin1Char('/') + name.join(separator) + QLatin1String(fileSuffix);
}

QString ThumbnailFiles::instanceOf(const QString &fileName)
{
    const QStringList name = fileName.split(separator);
    const bool isOurs = name.size() == nameParts && fileName.endsWith(QLatin1String(fileSuffix));
    return isOurs ? QUrl::fromPercentEncoding(name.first().toLatin1()) : QString();
}

void ThumbnailFiles::remove(const QSet<QString> &instanceUids) const
{
    if (!QFileInfo::exists(m_folder)) {
        return;
    }
    QSet<QString> folders;
    for (const QString &uid : instanceUids) {
        folders.insert(folderOf(uid));
    }
    for (const QString &path : qAsConst(folders)) {
        QDir folder(path);
        for (const QString &name : folder.entryList(QDir::Files)) {
            const QString uid = instanceOf(name);
            if (!uid.isNull() && instanceUids.contains(uid)) {
                folder.remove(name);
            }
        }
    }
}
