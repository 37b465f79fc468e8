#include "fragments.h"

#include "filewindow.h"

#include <QtEndian>

#include <algorithm>

namespace {

constexpr quint32 itemTag = 0xfffee000;
constexpr qint64 itemHeader = 8;
/// Far more than the frames of any object.
constexpr int mostFragments = 1000 * 1000;
constexpr quint32 mostTableBytes = mostFragments * sizeof(quint32);

/// Whether a fragment begins a picture of the JPEG family.
bool beginsPicture(const uchar *bytes)
{
    return bytes[0] == 0xff && (bytes[1] == 0xd8 || bytes[1] == 0x4f);
}

} // namespace

bool Fragments::read(FileWindow &file, qint64 offset)
{
    m_fragments.clear();
    m_offsets.clear();
    bool isTable = true;
    while (m_fragments.size() < mostFragments) {
        const uchar *bytes = file.at(offset, itemHeader);
        if (!bytes
            || ((quint32(qFromLittleEndian<quint16>(bytes)) << 16) | qFromLittleEndian<quint16>(bytes + 2))
                != itemTag) {
            break;
        }
        const auto length = qFromLittleEndian<quint32>(bytes + 4);
        offset += itemHeader;
        if (length > file.size() - offset) {
            break; // cut
        }
        if (!isTable) {
            m_fragments.append({offset, length});
        } else if (length <= mostTableBytes && file.at(offset, length)) {
            const uchar *table = file.at(offset, length);
            for (quint32 at = 0; at + sizeof(quint32) <= length; at += sizeof(quint32)) {
                m_offsets.append(qFromLittleEndian<quint32>(table + at));
            }
            m_base = offset + length;
        }
        isTable = false;
        offset += length;
    }
    return !m_fragments.isEmpty();
}

Fragments::Range Fragments::byOffsets(int number) const
{
    const auto at = [this](quint32 offset) {
        const auto found = std::find_if(m_fragments.begin(), m_fragments.end(),
            [&](const Fragment &fragment) { return fragment.offset - itemHeader >= m_base + offset; });
        return int(found - m_fragments.begin());
    };
    const int end = number + 1 < m_offsets.size() ? at(m_offsets.at(number + 1)) : m_fragments.size();
    return {at(m_offsets.at(number)), end};
}

Fragments::Range Fragments::byMarkers(FileWindow &file, int number) const
{
    Range range;
    int frame = -1;
    for (int i = 0; i < m_fragments.size(); ++i) {
        const uchar *bytes = m_fragments.at(i).length >= 2 ? file.at(m_fragments.at(i).offset, 2) : nullptr;
        if (bytes && beginsPicture(bytes)) {
            ++frame;
            if (frame == number) {
                range.first = i;
            } else if (frame == number + 1) {
                range.end = i;
                return range;
            }
        }
    }
    range.end = frame == number ? m_fragments.size() : range.first;
    return range;
}

Fragments::Range Fragments::rangeOf(FileWindow &file, int number, int frames) const
{
    if (frames == 1) {
        return {0, m_fragments.size()};
    }
    if (m_fragments.size() == frames) {
        return {number, number + 1};
    }
    if (m_offsets.size() == frames) {
        return byOffsets(number);
    }
    const Range marked = byMarkers(file, number);
    return marked.first < marked.end || m_fragments.size() > frames || number >= m_fragments.size()
        ? marked
        : Range{number, number + 1};
}

QByteArray Fragments::frame(FileWindow &file, int number, int frames, qint64 mostBytes) const
{
    const Range range = rangeOf(file, number, frames);
    QByteArray bytes;
    for (int i = range.first; i < range.end; ++i) {
        const Fragment &fragment = m_fragments.at(i);
        const uchar *part = bytes.size() + qint64(fragment.length) <= mostBytes
            ? file.at(fragment.offset, fragment.length)
            : nullptr;
        if (!part) {
            return {};
        }
        bytes.append(reinterpret_cast<const char *>(part), int(fragment.length));
    }
    return bytes;
}
