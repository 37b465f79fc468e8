#include "httpanswerreader.h"

#include <QByteArrayList>

#include <algorithm>
#include <cctype>
#include <utility>

namespace {

constexpr qint64 mostHead = 64 << 10; ///< with what trails behind the last chunk
constexpr int switchingProtocols = 101;
constexpr int firstFinal = 200;
constexpr int good = 200;
constexpr int noContent = 204;
constexpr int notModified = 304;

constexpr int decimal = 10;
constexpr int hexadecimal = 16;

/// Of nothing but digits; -1 where it is none, or too large.
qint64 numberOf(const QByteArray &text, int base)
{
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber, base);
    const bool isOfDigits = std::all_of(text.begin(), text.end(),
        [](char letter) { return std::isxdigit(static_cast<unsigned char>(letter)) != 0; });
    return isNumber && isOfDigits ? number : -1;
}

} // namespace

bool HttpAnswerReader::isOfLines() const
{
    return m_mode == Mode::StatusLine || m_mode == Mode::Header || m_mode == Mode::ChunkSize
        || m_mode == Mode::ChunkEnd || m_mode == Mode::Trailer;
}

void HttpAnswerReader::feed(const QByteArray &bytes)
{
    m_hasBegun = m_hasBegun || !bytes.isEmpty();
    for (int at = 0; at < bytes.size();) {
        if (isComplete() || isBroken()) {
            m_keepsAlive = false; // whatever this is, it answers nothing that was asked
            return;
        }
        const char *data = bytes.constData() + at;
        at += isOfLines() ? takeLine(data, bytes.size() - at) : takeBody(data, bytes.size() - at);
    }
}

void HttpAnswerReader::endOfLine()
{
    m_keepsAlive = false;
    if (m_mode == Mode::UntilEnd) {
        m_mode = Mode::Complete;
    }
}

int HttpAnswerReader::takeLine(const char *data, int length)
{
    const char *end = std::find(data, data + length, '\n');
    const bool isWhole = end != data + length;
    const int taken = static_cast<int>(end - data) + (isWhole ? 1 : 0);
    const bool isOfChunks = m_mode == Mode::ChunkSize || m_mode == Mode::ChunkEnd; // there may be many
    m_headBytes += isOfChunks ? 0 : taken;
    m_line.append(data, static_cast<int>(end - data));
    if (m_headBytes > mostHead || m_line.size() > mostHead) {
        m_mode = Mode::Broken;
    } else if (isWhole) {
        if (m_line.endsWith('\r')) {
            m_line.chop(1);
        }
        const QByteArray line = std::exchange(m_line, {});
        readLine(line);
    }
    return taken;
}

void HttpAnswerReader::readLine(const QByteArray &line)
{
    bool isGood = true;
    switch (m_mode) {
    case Mode::StatusLine:
        isGood = readStatus(line);
        break;
    case Mode::Header:
        isGood = line.isEmpty() ? endHead() : readHeader(line);
        break;
    case Mode::ChunkSize:
        isGood = readChunkSize(line);
        break;
    case Mode::ChunkEnd:
        isGood = line.isEmpty();
        m_mode = Mode::ChunkSize;
        break;
    default: // what trails behind the last chunk is of no use
        if (line.isEmpty()) {
            m_mode = Mode::Complete;
        }
    }
    if (!isGood) {
        m_mode = Mode::Broken;
    }
}

bool HttpAnswerReader::readStatus(const QByteArray &line)
{
    constexpr int versionEnd = 8;
    constexpr int statusEnd = 12;
    bool isNumber = false;
    m_status = line.mid(versionEnd + 1, statusEnd - versionEnd - 1).toInt(&isNumber);
    m_reason = line.mid(statusEnd + 1).trimmed();
    m_keepsAlive = line.startsWith("HTTP/1.1");
    m_isChunked = false;
    m_announced = -1;
    m_contentType.clear();
    m_location.clear();
    m_mode = Mode::Header;
    return isNumber && line.startsWith("HTTP/1.");
}

bool HttpAnswerReader::readHeader(const QByteArray &line)
{
    const int colon = line.indexOf(':');
    const QByteArray name = line.left(colon).trimmed().toLower();
    const QByteArray value = line.mid(colon + 1).trimmed();
    if (name == "content-length") {
        const qint64 length = numberOf(value, decimal);
        const bool isOther = m_announced >= 0 && m_announced != length;
        m_announced = length;
        return length >= 0 && !isOther;
    }
    if (name == "transfer-encoding") {
        m_isChunked = value.toLower() == "chunked"; // we have asked for no other
        return m_isChunked;
    }
    if (name == "content-encoding") {
        return value.toLower() == "identity"; // likewise
    }
    if (name == "content-type") {
        m_contentType = value;
    } else if (name == "location") {
        m_location = value;
    } else if (name == "connection") {
        const QByteArray words = value.toLower();
        m_keepsAlive = (m_keepsAlive || words.contains("keep-alive")) && !words.contains("close");
    }
    return colon > 0;
}

bool HttpAnswerReader::endHead()
{
    if (m_status < firstFinal) { // the one that counts is still to come
        m_mode = Mode::StatusLine;
        return m_status != switchingProtocols;
    }
    if (m_status == noContent || m_status == notModified) {
        m_mode = Mode::Complete;
    } else if (m_isChunked) {
        m_mode = Mode::ChunkSize;
    } else if (m_announced >= 0) {
        m_left = m_announced;
        m_mode = m_left > 0 ? Mode::Sized : Mode::Complete;
        return hasRoom(m_left);
    } else {
        m_mode = Mode::UntilEnd;
    }
    return true;
}

bool HttpAnswerReader::readChunkSize(const QByteArray &line)
{
    m_left = numberOf(line.split(';').constFirst().trimmed(), hexadecimal);
    m_mode = m_left > 0 ? Mode::Chunk : Mode::Trailer;
    return m_left >= 0 && hasRoom(m_left);
}

bool HttpAnswerReader::isTaken() const
{
    return m_take && m_status == good;
}

/// @return whether so much more of the body may come
bool HttpAnswerReader::hasRoom(qint64 bytes) const
{
    return isTaken() || bytes <= m_mostBody - m_body.size();
}

bool HttpAnswerReader::keep(const char *data, int length)
{
    if (isTaken()) {
        return m_take(m_contentType, data, length);
    }
    m_body.append(data, length);
    return true;
}

int HttpAnswerReader::takeBody(const char *data, int length)
{
    const bool isCounted = m_mode != Mode::UntilEnd;
    const int taken = isCounted ? static_cast<int>(std::min<qint64>(m_left, length)) : length;
    if ((!isCounted && !hasRoom(taken)) || !keep(data, taken)) {
        m_mode = Mode::Broken;
        return taken;
    }
    m_left -= taken;
    if (isCounted && m_left == 0) {
        m_mode = m_mode == Mode::Chunk ? Mode::ChunkEnd : Mode::Complete;
    }
    return taken;
}
