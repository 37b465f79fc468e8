#include "filewalker.h"

#include "systemtext.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>

namespace {

constexpr qint64 nanosecondsPerSecond = 1'000'000'000;

struct CloseFolder
{
    void operator()(DIR *folder) const { closedir(folder); }
};

/// Names in the index are text: a name that does not survive the way there and back could not be opened
/// again.
bool isText(const QByteArray &name)
{
    return QFile::encodeName(QFile::decodeName(name)) == name;
}

FileReason reasonOf(int systemError)
{
    switch (systemError) {
    case EACCES:
    case EPERM:
        return FileReason::NoPermission;
    case ELOOP:
        return FileReason::LinkLoop;
    case ENOENT:
        return FileReason::NoSuchFile;
    default:
        return FileReason::ReadFailed;
    }
}

std::vector<QByteArray> sortedNames(DIR *folder)
{
    std::vector<QByteArray> names;
    while (const dirent *entry = readdir(folder)) {
        if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0) {
            names.emplace_back(entry->d_name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

FileStamp stampOf(const struct stat &status)
{
    FileStamp stamp;
    stamp.size = status.st_size;
    stamp.time = status.st_mtim.tv_sec * nanosecondsPerSecond + status.st_mtim.tv_nsec;
    stamp.inode = status.st_ino;
    return stamp;
}

FileWalker::FileWalker(QByteArray excludedFolder, Sink sink)
    : m_excluded(std::move(excludedFolder))
    , m_sink(std::move(sink))
{ }

bool FileWalker::walk(const QByteArray &path)
{
    std::vector<QByteArray> folders;
    if (!visitEntry(path, &folders)) {
        return false;
    }
    while (!folders.empty()) {
        const QByteArray folder = folders.back();
        folders.pop_back();
        const std::unique_ptr<DIR, CloseFolder> handle(opendir(folder.constData()));
        if (!handle) {
            if (!refuse(folder, reasonOf(errno), errno)) {
                return false;
            }
            continue;
        }
        std::vector<QByteArray> below;
        for (const QByteArray &name : sortedNames(handle.get())) {
            const QByteArray entry = folder.endsWith('/') ? folder + name : folder + '/' + name;
            const bool go =
                name.startsWith('.') ? refuse(entry, FileReason::Hidden) : visitEntry(entry, &below);
            if (!go) {
                return false;
            }
        }
        folders.insert(folders.end(), below.rbegin(), below.rend());
    }
    return true;
}

bool FileWalker::visitEntry(const QByteArray &path, std::vector<QByteArray> *folders)
{
    if (!isText(path)) {
        return refuse(path, FileReason::NameNotText);
    }
    struct stat status = {};
    if (stat(path.constData(), &status) != 0) {
        const int error = errno;
        const bool link = lstat(path.constData(), &status) == 0 && S_ISLNK(status.st_mode);
        return refuse(path, link && error == ENOENT ? FileReason::BrokenLink : reasonOf(error), error);
    }
    if (S_ISDIR(status.st_mode)) {
        if (path == m_excluded) {
            return refuse(path, FileReason::InsideStore);
        }
        if (!enterOnce(status.st_dev, status.st_ino)) {
            return refuse(path, FileReason::LinkLoop);
        }
        folders->push_back(path);
        return true;
    }
    if (!S_ISREG(status.st_mode)) {
        return refuse(path, FileReason::NotARegularFile);
    }
    WalkedFile file;
    file.path = path;
    file.stamp = stampOf(status);
    return m_sink(std::move(file));
}

bool FileWalker::refuse(const QByteArray &path, FileReason reason, int systemError)
{
    WalkedFile file;
    file.path = path;
    file.reason = reason;
    if (systemError != 0) {
        file.detail = systemText(systemError);
    }
    return m_sink(std::move(file));
}

bool FileWalker::enterOnce(quint64 device, quint64 inode)
{
    const QPair<quint64, quint64> key(device, inode);
    if (m_entered.contains(key)) {
        return false;
    }
    m_entered.insert(key);
    return true;
}
