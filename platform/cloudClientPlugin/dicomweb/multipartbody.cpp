#include "multipartbody.h"

#include <QFileInfo>
#include <QUuid>

#include <algorithm>
#include <cstring>

MultipartBody::MultipartBody(QByteArray partType, QObject *parent)
    : QIODevice(parent)
    , m_partType(std::move(partType))
    , m_boundary(QUuid::createUuid().toByteArray(QUuid::Id128))
{ }

QByteArray MultipartBody::contentType() const
{
    return "multipart/related; type=\"" + m_partType + "\"; boundary=" + m_boundary;
}

QByteArray MultipartBody::head(int part) const
{
    return (part > 0 ? "\r\n--" : "--") + m_boundary + "\r\nContent-Type: " + m_partType + "\r\n\r\n";
}

QByteArray MultipartBody::tail() const
{
    return "\r\n--" + m_boundary + "--\r\n";
}

bool MultipartBody::addFile(const QString &path)
{
    const QFileInfo file(path);
    if (!file.isFile() || file.size() == 0) {
        return false;
    }
    m_parts.append({path, m_size, file.size()});
    m_size += head(m_parts.size() - 1).size() + file.size();
    return true;
}

bool MultipartBody::seek(qint64 position)
{
    return position >= 0 && position <= size() && QIODevice::seek(position);
}

int MultipartBody::partAt(qint64 position) const
{
    const auto after = std::upper_bound(m_parts.cbegin(), m_parts.cend(), position,
        [](qint64 at, const Part &part) { return at < part.begin; });
    return static_cast<int>(after - m_parts.cbegin()) - 1;
}

qint64 MultipartBody::readFile(const Part &part, qint64 offset, char *data, qint64 most)
{
    if (m_file.fileName() != part.path || !m_file.isOpen()) {
        m_file.close();
        m_file.setFileName(part.path);
        m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    const qint64 got =
        m_file.isOpen() && m_file.seek(offset) ? m_file.read(data, std::min(most, part.length - offset)) : -1;
    if (got <= 0) {
        m_unreadable = part.path;
        setErrorString(m_file.errorString());
        return -1;
    }
    return got;
}

/// One piece: of a head, of a file or of the tail.
qint64 MultipartBody::readAt(qint64 position, char *data, qint64 most)
{
    const auto copy = [&](const QByteArray &text, qint64 from) {
        const qint64 length = std::min(most, text.size() - from);
        std::memcpy(data, text.constData() + from, static_cast<std::size_t>(length));
        return length;
    };
    if (position >= m_size) {
        return copy(tail(), position - m_size);
    }
    const int number = partAt(position);
    const Part &part = m_parts[number];
    const QByteArray before = head(number);
    const qint64 inside = position - part.begin;
    return inside < before.size() ? copy(before, inside) : readFile(part, inside - before.size(), data, most);
}

qint64 MultipartBody::readData(char *data, qint64 most)
{
    qint64 done = 0;
    while (done < most && pos() + done < size()) {
        const qint64 got = readAt(pos() + done, data + done, most - done);
        if (got < 0) {
            return done > 0 ? done : -1;
        }
        done += got;
    }
    return done;
}
