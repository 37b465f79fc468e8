#include "filedisposal.h"

#include "indexconnection.h"
#include "namedfiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QLatin1Char separator('/');
constexpr int foldersAbove = 2;

/// Whether it names one place, and not another one to the system than it seems to.
bool isPlain(const QString &path)
{
    return QDir::isAbsolutePath(path) && QDir::cleanPath(path) == path && !path.contains(QChar(0));
}

/// @return errno, 0 where the file is gone
int removeNow(const QString &path)
{
    if (unlink(QFile::encodeName(path).constData()) == 0) {
        return 0;
    }
    return errno == ENOENT || errno == ENOTDIR ? 0 : errno;
}

/// In doubt it is there, as where its folder may not be looked into.
bool isOnDisk(const QString &path)
{
    struct stat found
    {
    };
    return lstat(QFile::encodeName(path).constData(), &found) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

QVector<FileLeft> stillThere(QVector<FileLeft> files)
{
    const auto isGone = [](const FileLeft &file) { return !isOnDisk(file.path); };
    files.erase(std::remove_if(files.begin(), files.end(), isGone), files.end());
    return files;
}

} // namespace

FileDisposal::FileDisposal(QString store, bool everyFile, QSet<QString> shared)
    : m_store(std::move(store))
    , m_everyFile(everyFile)
    , m_shared(std::move(shared))
{ }

void FileDisposal::removeFile(const QString &path, bool isCopy)
{
    if (!isToGo(path, isCopy)) {
        return;
    }
    const int error = removeNow(path);
    if (error == 0) {
        ++m_removed;
    } else {
        m_failed.append({path, error});
    }
    const QString folder = QFileInfo(path).path();
    m_touched.insert(folder);
    if (isCopy) {
        m_touchedByCopies.insert(folder);
    }
}

bool FileDisposal::isToGo(const QString &path, bool isCopy)
{
    if (!isPlain(path)) {
        return false;
    }
    return m_everyFile || (isCopy && !m_shared.contains(path) && isOurs(path));
}

bool FileDisposal::isOurs(const QString &path)
{
    if (path.startsWith(m_store + separator)) {
        return isOwnFolder(QFileInfo(path).path());
    }
    constexpr int levelsOfStore = 5; // store/patient/study/series/file
    return path.section(separator, -levelsOfStore, -levelsOfStore) != m_store.section(separator, -1);
}

bool FileDisposal::isOwnFolder(const QString &folder)
{
    const auto known = m_ownFolders.constFind(folder);
    if (known != m_ownFolders.constEnd()) {
        return *known;
    }
    const QString real = QFileInfo(folder).canonicalFilePath();
    // One that cannot be followed has nothing that could be removed, or will say why.
    const bool own =
        real.isEmpty() || real == QFileInfo(m_store).canonicalFilePath() + folder.mid(m_store.size());
    m_ownFolders.insert(folder, own);
    return own;
}

void FileDisposal::removeFolders(bool lastWasCopy)
{
    removeEmpty(m_touched);
    if (lastWasCopy) {
        for (int i = 0; i < foldersAbove; ++i) {
            QSet<QString> above;
            for (const QString &folder : qAsConst(m_touchedByCopies)) {
                above.insert(QFileInfo(folder).path());
            }
            removeEmpty(above);
            m_touchedByCopies = above;
        }
    }
    m_touched.clear();
    m_touchedByCopies.clear();
}

void FileDisposal::removeEmpty(const QSet<QString> &folders) const
{
    for (const QString &folder : folders) {
        const bool holdsStore = (m_store + separator).startsWith(folder + separator);
        if (!holdsStore) {
            rmdir(QFile::encodeName(folder).constData());
        }
    }
}

QVector<FileLeft> FileDisposal::tryAgain(const QSqlDatabase &db, const QVector<FileLeft> &files)
{
    constexpr int waitMs = 1000;
    IndexConnection::setLockWait(db, waitMs);
    // Files come to their places within a transaction: what has no record now gets none while it goes.
    const WriteTransaction lock(db);
    IndexConnection::setLockWait(db, IndexConnection::lockWaitMs);
    if (!lock.isActive()) {
        return stillThere(files);
    }
    NamedFiles named(db);
    QVector<FileLeft> failed;
    for (const FileLeft &file : files) {
        const int error = named.contains(file.path) ? 0 : removeNow(file.path);
        if (error != 0) {
            failed.append({file.path, error});
        }
    }
    return stillThere(failed);
}

QVector<FileLeft> FileDisposal::left() const
{
    return stillThere(m_failed);
}
