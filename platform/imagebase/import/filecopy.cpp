#include "filecopy.h"

#include "filedescriptor.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr std::size_t copyStep = 4U << 20U;
constexpr mode_t mode = 0644;
constexpr int mostTries = 1000;

/// Where the kernel cannot copy between these two files.
int copyThroughMemory(int from, int to, const std::atomic<bool> &cancelled)
{
    constexpr std::size_t bufferSize = 256U << 10U;
    thread_local std::array<char, bufferSize> buffer;
    for (;;) {
        const ssize_t count = read(from, buffer.data(), buffer.size());
        if (count == 0) {
            return 0;
        }
        const int error = count < 0 ? errno : writeAll(to, buffer.data(), static_cast<std::size_t>(count));
        if (error != 0) {
            return error;
        }
        if (cancelled) {
            return ECANCELED;
        }
    }
}

QByteArray folderOf(const QByteArray &path)
{
    const int slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray("./") : path.left(slash + 1);
}

/// Tries passing names in the folder of target until one is free: another computer may have had the same
/// process number. @param use answers errno @return errno of it
template <typename Use>
int withPassingName(const QByteArray &target, Use use)
{
    static std::atomic<int> serial{0};
    int error = EEXIST;
    for (int tries = 0; error == EEXIST && tries < mostTries; ++tries) {
        error = use(folderOf(target) + ".copy-" + QByteArray::number(getpid()) + '-'
            + QByteArray::number(serial++) + ".part");
    }
    return error;
}

int renameTo(const QByteArray &passing, const QByteArray &target)
{
    if (std::rename(passing.constData(), target.constData()) == 0) {
        return 0;
    }
    const int error = errno;
    unlink(passing.constData());
    return error;
}

/// Gives a file that has no name yet its own, or that of the one that it replaces.
int linkTo(int file, const QByteArray &target)
{
    const QByteArray own = "/proc/self/fd/" + QByteArray::number(file);
    const auto link = [&own](const QByteArray &name) {
        return linkat(AT_FDCWD, own.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) == 0 ? 0
                                                                                                     : errno;
    };
    const int error = link(target);
    return error != EEXIST ? error : withPassingName(target, [&](const QByteArray &passing) {
        const int linked = link(passing);
        return linked == 0 ? renameTo(passing, target) : linked;
    });
}

/// Where a file must have a name from the start.
int copyUnderName(
    int from, const QByteArray &passing, const QByteArray &target, const std::atomic<bool> &cancelled)
{
    const int to = open(passing.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
    if (to < 0) {
        return errno;
    }
    int error = copyBytes(from, to, cancelled);
    // Only now may a server tell that it has no room.
    if (close(to) != 0 && error == 0) {
        error = errno;
    }
    if (error == 0) {
        return renameTo(passing, target);
    }
    unlink(passing.constData());
    return error;
}

} // namespace

bool isDiskFull(int systemError)
{
    return systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
}

int writeAll(int to, const char *bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t written = write(to, bytes, size);
        if (written < 0) {
            return errno;
        }
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return 0;
}

int copyBytes(int from, int to, const std::atomic<bool> &cancelled)
{
    bool any = false;
    for (;;) {
        const ssize_t count = copy_file_range(from, nullptr, to, nullptr, copyStep, 0);
        if (count == 0 && any) {
            return 0;
        }
        if (count <= 0) {
            // Nothing copied yet: special file systems answer 0 or an error here and are read plainly.
            const bool unable = !any
                && (count == 0 || errno == EXDEV || errno == EINVAL || errno == EOPNOTSUPP
                    || errno == ENOSYS);
            return unable ? copyThroughMemory(from, to, cancelled) : errno;
        }
        any = true;
        if (cancelled) {
            return ECANCELED;
        }
    }
}

int copyIntoPlace(const QByteArray &source, const QByteArray &target, const std::atomic<bool> &cancelled)
{
    const FileDescriptor from(open(source.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (from < 0 || fstat(from, &status) != 0) {
        return errno;
    }
    if (!S_ISREG(status.st_mode)) {
        return EINVAL;
    }
    {
        const FileDescriptor nameless(
            open(folderOf(target).constData(), O_WRONLY | O_TMPFILE | O_CLOEXEC, mode));
        const int error = nameless >= 0 ? copyBytes(from, nameless, cancelled) : 0;
        if (error != 0 || (nameless >= 0 && linkTo(nameless, target) == 0)) {
            return error;
        }
    }
    // Not every file system knows files without a name, or gives them one later.
    if (lseek(from, 0, SEEK_SET) != 0) {
        return errno;
    }
    return withPassingName(
        target, [&](const QByteArray &passing) { return copyUnderName(from, passing, target, cancelled); });
}
