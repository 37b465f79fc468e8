#include "multipartreader.h"

#include <algorithm>

namespace {

constexpr int longestHead = 16 * 1024;
constexpr int bridgeLength = 1024; ///< more than most heads with their boundaries have
constexpr int longestPreamble = 64 * 1024; ///< and what follows the last part
constexpr int longestBoundary = 200; ///< 70 by the standard
constexpr char lineEnd[] = "\r\n";
constexpr char headEnd[] = "\r\n\r\n";
constexpr int markLength = 2; ///< of what follows a boundary

} // namespace

QByteArray MultipartReader::parameter(const QByteArray &header, const QByteArray &name)
{
    int at = header.indexOf(';');
    while (at >= 0) {
        int end = at + 1;
        for (bool quoted = false; end < header.size() && (quoted || header[end] != ';'); ++end) {
            quoted = quoted != (header[end] == '"');
        }
        const QByteArray item = header.mid(at + 1, end - at - 1).trimmed();
        const int equals = item.indexOf('=');
        if (equals > 0 && item.left(equals).trimmed().toLower() == name) {
            const QByteArray value = item.mid(equals + 1).trimmed();
            const bool isQuoted = value.size() >= 2 && value.startsWith('"') && value.endsWith('"');
            return isQuoted ? value.mid(1, value.size() - 2) : value;
        }
        at = end < header.size() ? end : -1;
    }
    return {};
}

MultipartReader::MultipartReader(const QByteArray &contentType, Sink sink)
    : m_sink(std::move(sink))
    , m_held(lineEnd) // so that a boundary at the very beginning is found as the others are
{
    const QByteArray boundary = parameter(contentType, "boundary");
    m_delimiter = lineEnd + QByteArray("--") + boundary;
    m_matcher.setPattern(m_delimiter);
    if (boundary.isEmpty() || boundary.size() > longestBoundary
        || !contentType.trimmed().toLower().startsWith("multipart/related")) {
        m_state = State::Broken;
    }
}

bool MultipartReader::feed(const QByteArray &bytes)
{
    if (m_state == State::Complete) {
        m_dropped += bytes.size();
        return m_dropped <= longestPreamble;
    }
    int from = 0;
    if (!m_held.isEmpty()) {
        from = bridge(bytes);
    }
    if (from < bytes.size() && !isAtEnd()) {
        m_held = QByteArray::fromRawData(bytes.constData() + from, bytes.size() - from);
        run();
        m_held = QByteArray(m_held.constData() + m_at, m_held.size() - m_at);
        m_at = 0;
    }
    return m_state != State::Broken;
}

/// What is held, with as little of the new as brings it to an end, so that the most is read where it lies.
/// @return how much of the new is done with
int MultipartReader::bridge(const QByteArray &bytes)
{
    const int held = m_held.size();
    int taken = std::min(bytes.size(), bridgeLength);
    m_held.append(bytes.constData(), taken);
    run();
    if (m_at < held && taken < bytes.size() && !isAtEnd()) {
        m_held.append(bytes.constData() + taken, bytes.size() - taken);
        taken = bytes.size();
        run();
    }
    if (m_at >= held || isAtEnd()) {
        taken = m_at - held;
        m_held.clear();
    } else {
        m_held.remove(0, m_at);
    }
    m_at = 0;
    return taken;
}

bool MultipartReader::isAtEnd() const
{
    return m_state == State::Broken || m_state == State::Complete;
}

void MultipartReader::run()
{
    while (!isAtEnd() && step()) { }
}

bool MultipartReader::fail()
{
    m_state = State::Broken;
    m_held.clear();
    m_at = 0;
    return false;
}

/// @return false where more bytes are needed
bool MultipartReader::step()
{
    switch (m_state) {
    case State::Before:
        return findFirst();
    case State::Boundary:
        return readBoundary();
    case State::Head:
        return readHead();
    case State::Part:
        return readPart();
    case State::Complete:
    case State::Broken:
        break;
    }
    return false;
}

bool MultipartReader::findFirst()
{
    const int at = m_matcher.indexIn(m_held, m_at);
    const int end = at >= 0 ? at : std::max(m_at, m_held.size() - m_delimiter.size() + 1);
    m_dropped += end - m_at;
    m_at = end;
    if (m_dropped > longestPreamble) {
        return fail();
    }
    if (at < 0) {
        return false;
    }
    m_at += m_delimiter.size();
    m_state = State::Boundary;
    return true;
}

/// Behind a boundary: another part, or the end.
bool MultipartReader::readBoundary()
{
    if (m_held.size() - m_at < markLength) {
        return false;
    }
    if (m_held.mid(m_at, markLength) == "--") {
        m_state = State::Complete;
        m_at = m_held.size();
        return true;
    }
    const int end = m_held.indexOf(lineEnd, m_at);
    if (end < 0) {
        return m_held.size() - m_at > longestBoundary ? fail() : false;
    }
    if (!m_held.mid(m_at, end - m_at).trimmed().isEmpty()) {
        return fail();
    }
    m_at = end; // its line end may be the empty line of a part without a head
    m_state = State::Head;
    return true;
}

bool MultipartReader::readHead()
{
    const int end = m_held.indexOf(headEnd, m_at);
    if (end < 0 || end - m_at > longestHead) {
        return end < 0 && m_held.size() - m_at <= longestHead ? false : fail();
    }
    QByteArray type;
    for (const QByteArray &line : m_held.mid(m_at, end - m_at).split('\n')) {
        const int colon = line.indexOf(':');
        if (colon > 0 && line.left(colon).trimmed().toLower() == "content-type") {
            type = line.mid(colon + 1).trimmed();
        }
    }
    m_at = end + int(sizeof headEnd) - 1;
    m_state = State::Part;
    return m_sink.begin(type) || fail();
}

bool MultipartReader::readPart()
{
    const int at = m_matcher.indexIn(m_held, m_at);
    const int end = at >= 0 ? at : std::max(m_at, m_held.size() - m_delimiter.size() + 1);
    if (end > m_at && !m_sink.data(m_held.constData() + m_at, end - m_at)) {
        return fail();
    }
    m_at = end;
    if (at < 0) {
        return false;
    }
    m_at += m_delimiter.size();
    m_state = State::Boundary;
    return m_sink.end() || fail();
}
