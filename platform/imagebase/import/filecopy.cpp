#include "filecopy.h"

#include "filedescriptor.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr std::size_t copyStep = 4U << 20U;

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

/// A name that no other copy of this computer has at the moment.
QByteArray passingName(const QByteArray &target)
{
    static std::atomic<int> serial{0};
    const QByteArray folder = target.left(target.lastIndexOf('/') + 1);
    return folder + ".copy-" + QByteArray::number(getpid()) + '-' + QByteArray::number(serial++) + ".part";
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
    const QByteArray passing = passingName(target);
    int error = 0;
    {
        const FileDescriptor to(
            open(passing.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644));
        if (to < 0) {
            return errno;
        }
        error = copyBytes(from, to, cancelled);
    }
    if (error == 0 && std::rename(passing.constData(), target.constData()) != 0) {
        error = errno;
    }
    if (error != 0) {
        unlink(passing.constData());
    }
    return error;
}
