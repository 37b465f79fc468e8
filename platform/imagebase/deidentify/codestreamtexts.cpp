#include "codestreamtexts.h"

namespace {

constexpr qint64 broken = -1;

enum Marker : uint {
    JpegStart = 0xffd8,
    End = 0xffd9,
    JpegScan = 0xffda,
    JpegComment = 0xfffe,
    Jpeg2000Start = 0xff4f,
    Jpeg2000Comment = 0xff64,
    TileStart = 0xff90,
    TileData = 0xff93
};

/// Fragments as if they were one piece: a stream may go on in the next one.
class Codestreams
{
public:
    Codestreams(FileWindow &file, const QVector<PixelBytes::Range> &fragments)
        : m_file(file)
        , m_fragments(fragments)
    {
        for (const PixelBytes::Range &fragment : fragments) {
            m_size += fragment.length;
        }
    }

    CodestreamTexts read();

private:
    int at(qint64 place);
    uint number(qint64 place, int bytes);
    bool hasText(qint64 place, const char *text);
    bool isNeeded(uint marker, qint64 value);
    void remove(qint64 begin, qint64 end);
    qint64 behindJpeg(qint64 place);
    qint64 behindJpeg2000(qint64 place);
    qint64 behindTile(qint64 start, quint32 length, qint64 data);
    bool seek(qint64 place);

    FileWindow &m_file;
    const QVector<PixelBytes::Range> &m_fragments;
    qint64 m_size = 0;
    int m_current = 0; ///< the fragment that was looked at last, and where it begins
    qint64 m_begin = 0;
    CodestreamTexts m_found;
};

bool Codestreams::seek(qint64 place)
{
    while (m_current > 0 && place < m_begin) {
        m_begin -= m_fragments.at(--m_current).length;
    }
    while (place < m_size && place >= m_begin + m_fragments.at(m_current).length) {
        m_begin += m_fragments.at(m_current++).length;
    }
    return place >= 0 && place < m_size;
}

/// -1 behind the end.
int Codestreams::at(qint64 place)
{
    const uchar *byte =
        seek(place) ? m_file.at(m_fragments.at(m_current).offset + place - m_begin, 1) : nullptr;
    return byte ? *byte : -1;
}

uint Codestreams::number(qint64 place, int bytes)
{
    uint value = 0;
    for (int i = 0; i < bytes; ++i) {
        value = value << 8 | uint(at(place + i) & 0xff);
    }
    return value;
}

bool Codestreams::hasText(qint64 place, const char *text)
{
    bool isSame = true;
    for (; *text && isSame; ++text, ++place) {
        isSame = at(place) == uchar(*text);
    }
    return isSame;
}

/// Of the segments of applications those that say how colours are meant.
bool Codestreams::isNeeded(uint marker, qint64 value)
{
    switch (marker) {
    case 0xffe0:
        return hasText(value, "JFIF");
    case 0xffe2:
        return hasText(value, "ICC_PROFILE");
    case 0xffe8:
        return hasText(value, "mrfx") || hasText(value, "SPIFF");
    case 0xffee:
        return hasText(value, "Adobe");
    default:
        return marker != JpegComment && (marker < 0xffe0 || marker > 0xffef);
    }
}

void Codestreams::remove(qint64 begin, qint64 end)
{
    while (begin < end && seek(begin)) {
        const PixelBytes::Range &fragment = m_fragments.at(m_current);
        const qint64 within = begin - m_begin;
        const qint64 length = qMin(end - begin, fragment.length - within);
        PixelBytes::Range range;
        range.offset = fragment.offset + within;
        range.length = length;
        if (!m_found.ranges.isEmpty()
            && m_found.ranges.last().offset + m_found.ranges.last().length == range.offset) {
            m_found.ranges.last().length += length;
        } else {
            m_found.ranges.append(range);
        }
        begin += length;
    }
}

qint64 Codestreams::behindJpeg(qint64 place)
{
    while (place < m_size) {
        const uint marker = number(place, 2);
        if (marker == 0xffff || marker == JpegStart || (marker >= 0xffd0 && marker <= 0xffd7)) {
            place += marker == 0xffff ? 1 : 2;
            continue;
        }
        if (marker == End) {
            return place + 2;
        }
        const qint64 length = number(place + 2, 2);
        if (marker < 0xffc0 || length < 2) {
            return broken;
        }
        if (!isNeeded(marker, place + 4)) {
            remove(place + 4, place + 2 + length);
        }
        place += 2 + length;
        const auto isMarker = [this](qint64 p) {
            const int code = at(p + 1);
            return at(p) == 0xff && code >= 0xc0 && code != 0xff && (code < 0xd0 || code > 0xd7);
        };
        while (marker == JpegScan && place < m_size && !isMarker(place)) {
            ++place;
        }
    }
    return m_size;
}

qint64 Codestreams::behindJpeg2000(qint64 place)
{
    qint64 tile = 0;
    quint32 tileLength = 0;
    while (place < m_size) {
        const uint marker = number(place, 2);
        if (marker == End) {
            return place + 2;
        }
        if (marker == TileData) {
            place = behindTile(tile, tileLength, place + 2);
            const uint next = number(place, 2);
            if (place < m_size && next != TileStart && next != End) {
                return next == Jpeg2000Start ? place : broken;
            }
            continue;
        }
        const qint64 length = number(place + 2, 2);
        if (marker < 0xff00 || length < 2) {
            return broken;
        }
        if (marker == TileStart) {
            tile = place;
            tileLength = number(place + 6, 4);
        } else if (marker == Jpeg2000Comment) {
            remove(place + 6, place + 2 + length);
        }
        place += 2 + length;
    }
    return m_size;
}

/// The last tile may leave its length open.
qint64 Codestreams::behindTile(qint64 start, quint32 length, qint64 data)
{
    if (length > 0) {
        return qMax(start + qint64(length), data);
    }
    while (data < m_size && number(data, 2) != End) {
        ++data;
    }
    return data;
}

CodestreamTexts Codestreams::read()
{
    bool hasAny = false;
    for (qint64 place = 0; place < m_size && m_found.isUnderstood;) {
        const uint marker = number(place, 2);
        const bool isStart = marker == JpegStart || marker == Jpeg2000Start;
        if (isStart) {
            const qint64 behind = marker == JpegStart ? behindJpeg(place + 2) : behindJpeg2000(place + 2);
            m_found.isUnderstood = behind != broken;
            place = behind;
            hasAny = true;
        } else {
            m_found.isUnderstood = hasAny || at(place) == 0;
            if (hasAny && at(place) != 0) {
                remove(place, place + 1); // whatever follows a picture is none of it
            }
            ++place;
        }
    }
    if (!m_found.isUnderstood) {
        m_found.ranges.clear(); // they may be anything
    }
    return m_found;
}

} // namespace

CodestreamTexts findCodestreamTexts(FileWindow &file, const QVector<PixelBytes::Range> &fragments)
{
    return Codestreams(file, fragments).read();
}
