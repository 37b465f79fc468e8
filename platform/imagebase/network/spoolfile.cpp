#include "spoolfile.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <zlib.h>

namespace {

constexpr char between = '-';
constexpr int checksumBase = 16;
constexpr qint64 bytesBetweenLooks = 1 << 20;

quint32 checksum(quint32 before, const void *bytes, qint64 size)
{
    return static_cast<quint32>(
        crc32_z(before, static_cast<const Bytef *>(bytes), static_cast<z_size_t>(size)));
}

} // namespace

bool SpoolFile::hasRoom(int descriptor, qint64 bytes)
{
    struct statvfs status = {};
    // Where the system does not say, writing tells.
    return fstatvfs(descriptor, &status) != 0 || qint64(status.f_bavail) * qint64(status.f_frsize) >= bytes;
}

SpoolFile::SpoolFile(QByteArray stem, int folder, bool synced, qint64 reserve)
    : m_stem(std::move(stem))
    , m_folder(folder)
    , m_synced(synced)
    , m_reserve(reserve)
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
    if (m_synced) {
        m_checksum = checksum(m_checksum, bytes, static_cast<qint64>(size));
    }
    if (m_size >= m_nextLook && m_error == 0) {
        m_nextLook = m_size + bytesBetweenLooks;
        m_error = hasRoom(m_file, m_reserve) ? 0 : ENOSPC;
    }
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
    m_keptPath = m_stem;
    if (m_synced) {
        m_keptPath +=
            between + QByteArray::number(m_size) + between + QByteArray::number(m_checksum, checksumBase);
    }
    m_keptPath += completeSuffix;
    if (m_error == 0 && std::rename(path().constData(), m_keptPath.constData()) != 0) {
        m_error = errno;
    }
    if (m_error != 0) {
        return m_error;
    }
    m_kept = true;
    if (m_synced && (fsync(m_file) != 0 || (m_folder >= 0 && fsync(m_folder) != 0))) {
        m_error = errno;
        unlink(m_keptPath.constData());
    }
    return m_error;
}

bool SpoolFile::isWhole(const QByteArray &path)
{
    const QByteArray name = path.mid(path.lastIndexOf('/') + 1).chopped(int(qstrlen(completeSuffix)));
    const QList<QByteArray> parts = name.split(between);
    if (parts.size() != 3) {
        return true;
    }
    QFile file(QFile::decodeName(path));
    if (!file.open(QIODevice::ReadOnly) || file.size() != parts[1].toLongLong()) {
        return false;
    }
    constexpr qint64 step = 256 << 10;
    quint32 sum = 0;
    while (!file.atEnd()) {
        const QByteArray bytes = file.read(step);
        if (bytes.isEmpty()) {
            return false;
        }
        sum = checksum(sum, bytes.constData(), bytes.size());
    }
    return sum == parts[2].toUInt(nullptr, checksumBase);
}
