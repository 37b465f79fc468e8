#include "spoolfile.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>
#include <zlib.h>

namespace {

constexpr char between = '-';
constexpr int checksumBase = 16;
constexpr long xfsMagic = 0x58465342; ///< which the system's header leaves out

quint32 checksum(quint32 before, const void *bytes, qint64 size)
{
    return static_cast<quint32>(
        crc32_z(before, static_cast<const Bytef *>(bytes), static_cast<z_size_t>(size)));
}

/// File systems whose journal is one: syncing a file after its renaming syncs the renaming, too.
bool syncsNames(int file)
{
    struct statfs status = {};
    if (fstatfs(file, &status) != 0) {
        return false;
    }
    const auto type = static_cast<long>(status.f_type);
    return type == EXT4_SUPER_MAGIC || type == BTRFS_SUPER_MAGIC || type == xfsMagic || type == TMPFS_MAGIC;
}

} // namespace

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
    if (m_synced) {
        m_checksum = checksum(m_checksum, bytes, static_cast<qint64>(size));
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
    if (m_synced && (fsync(m_file) != 0 || (!syncsNames(m_file) && fsync(m_folder) != 0))) {
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
