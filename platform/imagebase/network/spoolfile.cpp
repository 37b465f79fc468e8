#include "spoolfile.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

SpoolFile::SpoolFile(QByteArray stem, int folder, bool synced)
    : m_stem(std::move(stem))
    , m_folder(folder)
    , m_synced(synced)
    , m_file(open(path().constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0644))
{
    if (m_file < 0) {
        m_error = errno;
    }
}

SpoolFile::~SpoolFile()
{
    if (m_file >= 0) {
        close(m_file);
        if (!m_kept) {
            unlink(path().constData());
        }
    }
}

void SpoolFile::write(const void *bytes, std::size_t size)
{
    const auto *next = static_cast<const char *>(bytes);
    m_size += static_cast<qint64>(size);
    while (size > 0 && m_error == 0) {
        const ssize_t written = ::write(m_file, next, size);
        if (written >= 0) {
            next += written;
            size -= static_cast<std::size_t>(written);
        } else if (errno != EINTR) {
            m_error = errno;
        }
    }
}

int SpoolFile::keep()
{
    if (m_error == 0 && m_synced && fdatasync(m_file) != 0) {
        m_error = errno;
    }
    if (m_error == 0 && std::rename(path().constData(), keptPath().constData()) != 0) {
        m_error = errno;
    }
    if (m_error != 0) {
        return m_error;
    }
    // The name must last as the bytes do.
    if (m_synced && fsync(m_folder) != 0) {
        m_error = errno;
        unlink(keptPath().constData());
    }
    m_kept = true;
    return m_error;
}
