#include "filewindow.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

FileWindow::~FileWindow()
{
    close();
}

bool FileWindow::open(const QByteArray &path)
{
    close();
    // Opening a FIFO would wait for its writer, and a terminal would become ours.
    m_file = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (m_file < 0) {
        return false;
    }
    struct stat status = {};
    if (::fstat(m_file, &status) != 0 || !S_ISREG(status.st_mode)) {
        const int reason = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        close();
        errno = reason;
        return false;
    }
    m_size = status.st_size;
    return true;
}

void FileWindow::openBytes(const QByteArray &bytes)
{
    close();
    m_buffer = bytes;
    m_data = m_buffer.constData();
    m_filled = m_buffer.size();
    m_size = m_filled;
}

void FileWindow::close()
{
    if (m_file >= 0) {
        ::close(m_file);
    }
    m_file = -1;
    m_start = m_filled = m_size = 0;
    m_error = 0;
}

const uchar *FileWindow::refill(qint64 offset, qint64 length)
{
    if (m_file < 0 || offset < 0 || length < 0 || offset > m_size || length > m_size - offset) {
        return nullptr;
    }
    const qint64 wanted = qMax(length, windowSize);
    if (m_buffer.size() < wanted || m_buffer.size() > 8 * wanted) {
        m_buffer.resize(static_cast<int>(wanted));
    }
    char *target = m_buffer.data();
    m_data = target;
    m_start = offset;
    m_filled = 0;
    while (m_filled < length) {
        const ssize_t got = ::pread(
            m_file, target + m_filled, static_cast<std::size_t>(wanted - m_filled), offset + m_filled);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            m_error = got < 0 ? errno : EIO; // cut short while we read it
            return nullptr;
        }
        m_filled += got;
    }
    return reinterpret_cast<const uchar *>(m_data);
}
