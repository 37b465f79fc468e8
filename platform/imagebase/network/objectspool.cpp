#include "objectspool.h"

#include "filedescriptor.h"
#include "namesync.h"
#include "spoolfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char receivedSuffix[] = ".received";
constexpr char downloadedSuffix[] = ".downloaded";
constexpr char lockName[] = "/lock";
constexpr char asideName[] = "aside";
constexpr int foldersTried = 5;

} // namespace

ObjectSpool::ObjectSpool(const QString &databasePath, bool synced, SpoolKind kind)
    : m_root(folderOf(databasePath, kind))
    , m_synced(synced)
    , m_kind(kind)
    , m_reserve(usualReserve)
{ }

ObjectSpool::~ObjectSpool()
{
    if (m_folderDescriptor >= 0) {
        close(m_folderDescriptor);
    }
    if (isOpen()) {
        leave(m_folder, m_lock);
    }
    for (const Adopted &adopted : qAsConst(m_adopted)) {
        leave(adopted.folder, adopted.lock);
    }
    rmdir(QFile::encodeName(m_root).constData());
}

QString ObjectSpool::folderOf(const QString &databasePath, SpoolKind kind)
{
    return QFileInfo(databasePath).absoluteFilePath()
        + QLatin1String(kind == SpoolKind::Received ? receivedSuffix : downloadedSuffix);
}

QString ObjectSpool::asideFolder() const
{
    return m_root + QLatin1Char('/') + QLatin1String(asideName);
}

int ObjectSpool::open()
{
    // Somebody who cleans up may just have taken a new folder for an abandoned one: another name then.
    for (int i = 0; i < foldersTried && !isOpen(); ++i) {
        m_folder = m_root + QLatin1Char('/') + QUuid::createUuid().toString(QUuid::Id128);
        if (!QDir().mkpath(m_folder)) {
            return errno != 0 ? errno : EACCES;
        }
        m_lock = lockFolder(m_folder);
    }
    if (isOpen()) {
        m_folderDescriptor =
            ::open(QFile::encodeName(m_folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        m_syncsNames = syncsNames(m_folderDescriptor);
        return m_folderDescriptor < 0 ? errno : syncFolders();
    }
    return EAGAIN;
}

/// Makes the new folder last, and the spool itself. @return errno
int ObjectSpool::syncFolders() const
{
    for (const QString &folder : {m_folder, m_root, QFileInfo(m_root).path()}) {
        const FileDescriptor opened(
            ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        // A folder above that may not be read has been there before.
        if (m_synced && opened >= 0 && fsync(opened) != 0) {
            return errno;
        }
    }
    return 0;
}

/// @return the descriptor that holds the lock, -1 where somebody else does or the folder is gone
int ObjectSpool::lockFolder(const QString &folder) const
{
    const QByteArray name = QFile::encodeName(folder) + lockName;
    const int lock = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    struct stat status = {};
    if (lock >= 0
        && (flock(lock, LOCK_EX | LOCK_NB) != 0 || fstat(lock, &status) != 0 || status.st_nlink == 0)) {
        close(lock);
        return -1;
    }
    return lock;
}

void ObjectSpool::leave(const QString &folder, int lock) const
{
    const QDir content(folder);
    if (content.entryList(QDir::Files | QDir::Hidden).size() <= 1) { // the lock itself
        unlink((QFile::encodeName(folder) + lockName).constData());
        rmdir(QFile::encodeName(folder).constData());
    }
    close(lock);
}

std::unique_ptr<SpoolFile> ObjectSpool::create(int *error)
{
    auto file =
        std::make_unique<SpoolFile>(QFile::encodeName(m_folder) + '/' + QByteArray::number(m_serial++),
            m_syncsNames ? -1 : m_folderDescriptor, m_synced, m_reserve);
    *error = file->error();
    return *error == 0 ? std::move(file) : nullptr;
}

bool ObjectSpool::hasRoom(qint64 bytes) const
{
    return SpoolFile::hasRoom(m_folderDescriptor, bytes + m_reserve);
}

QVector<QByteArray> ObjectSpool::adopt()
{
    QVector<QByteArray> objects;
    const QStringList folders = QDir(m_root).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks);
    for (const QString &name : folders) {
        const QString folder = m_root + QLatin1Char('/') + name;
        const int lock = name == QLatin1String(asideName) ? -1 : lockFolder(folder);
        if (lock < 0) {
            continue;
        }
        m_adopted.append({folder, lock});
        const QDir content(folder);
        const QStringList files = content.entryList(QDir::Files | QDir::Hidden, QDir::Name);
        for (const QString &file : files) {
            if (file.endsWith(QLatin1String(SpoolFile::completeSuffix))) {
                objects.append(QFile::encodeName(content.filePath(file)));
            } else if (file.endsWith(QLatin1String(SpoolFile::partSuffix))) {
                QFile::remove(content.filePath(file));
            }
        }
    }
    return objects;
}

/// People may have cleared the folder: it is looked at when it seems to be full.
bool ObjectSpool::hasPlaceAside(qint64 bytes)
{
    if (m_placesAside <= 0 || m_bytesAside < bytes) {
        const QFileInfoList there = QDir(asideFolder()).entryInfoList(QDir::Files | QDir::Hidden);
        m_placesAside = mostDownloadsAside - there.size();
        m_bytesAside = mostBytesAside;
        for (const QFileInfo &one : there) {
            m_bytesAside -= one.size();
        }
    }
    const bool hasPlace = m_placesAside > 0 && m_bytesAside >= bytes;
    m_placesAside -= hasPlace ? 1 : 0;
    m_bytesAside -= hasPlace ? bytes : 0;
    return hasPlace;
}

QString ObjectSpool::keepAside(const QByteArray &path)
{
    if (m_kind == SpoolKind::Downloaded && !hasPlaceAside(QFileInfo(QFile::decodeName(path)).size())) {
        unlink(path.constData());
        return {};
    }
    const QString kept = asideFolder() + QLatin1Char('/') + QUuid::createUuid().toString(QUuid::Id128)
        + QLatin1String(SpoolFile::completeSuffix);
    const bool moved = QDir().mkpath(asideFolder())
        && std::rename(path.constData(), QFile::encodeName(kept).constData()) == 0;
    return moved ? kept : QString();
}
