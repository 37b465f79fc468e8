#include "pixelplace.h"

#include "elementcursor.h"

#include <QtEndian>

namespace {

constexpr quint32 floatPixels = 0x7fe00008;
constexpr quint32 doublePixels = 0x7fe00009;
constexpr quint32 integerPixels = 0x7fe00010;

template <typename T>
T number(const uchar *bytes, bool bigEndian)
{
    return bigEndian ? qFromBigEndian<T>(bytes) : qFromLittleEndian<T>(bytes);
}

/// Unlike the cursor's own, it takes lengths that go beyond the end of a file that was cut.
bool readHeader(FileWindow &file, qint64 position, ElementEncoding encoding, ElementPlace &element)
{
    const uchar *bytes = file.at(position, shortHeader);
    if (!bytes) {
        return false;
    }
    const bool big = encoding.isBigEndian;
    element.tag = (quint32(number<quint16>(bytes, big)) << 16) | number<quint16>(bytes + 2, big);
    element.vr = encoding.isExplicit ? qFromBigEndian<quint16>(bytes + 4) : quint16(0);
    element.value = position + shortHeader;
    if (!encoding.isExplicit) {
        element.length = number<quint32>(bytes + 4, big);
        return true;
    }
    if (lengthField(element.vr) != LengthField::Long) {
        element.length = number<quint16>(bytes + 6, big);
        return true;
    }
    bytes = file.at(position, longHeader);
    element.value = position + longHeader;
    element.length = bytes ? number<quint32>(bytes + 8, big) : 0;
    return bytes != nullptr;
}

/// The header behind which a parser stands: of the long form where it looks like one.
qint64 startOfHeader(FileWindow &file, qint64 taken, ElementEncoding encoding)
{
    ElementPlace element;
    const bool isLong = encoding.isExplicit && taken >= longHeader
        && readHeader(file, taken - longHeader, encoding, element) && element.value == taken
        && (element.tag >> 16) >= 0x5200;
    return taken - (isLong ? longHeader : shortHeader);
}

PixelPlace placeOf(const ElementPlace &element)
{
    PixelPlace place;
    place.kind = element.tag == integerPixels ? PixelPlace::Kind::Integer
        : element.tag == floatPixels          ? PixelPlace::Kind::Float
                                              : PixelPlace::Kind::Double;
    place.offset = element.value;
    place.length = element.length;
    place.isWords = element.vr == vrCode('O', 'W');
    place.isEncapsulated = element.length == undefinedLength;
    return place;
}

/// Behind an element of undefined length; -1 where its end is not found.
qint64 behindSequence(FileWindow &file, qint64 position, ElementEncoding encoding)
{
    if (encoding.isBigEndian) {
        return -1;
    }
    ElementCursor cursor(file, position,
        encoding.isExplicit ? ElementCursor::Encoding::Explicit : ElementCursor::Encoding::Implicit);
    ElementPlace element;
    return cursor.peek(element) && cursor.skip(element) ? cursor.position() : -1;
}

} // namespace

PixelPlace findPixels(FileWindow &file, qint64 taken, ElementEncoding encoding)
{
    qint64 position = startOfHeader(file, taken, encoding);
    ElementPlace element;
    while (position >= 0 && readHeader(file, position, encoding, element) && element.tag <= integerPixels) {
        if (element.tag == integerPixels || element.tag == floatPixels || element.tag == doublePixels) {
            return placeOf(element);
        }
        position = element.length == undefinedLength ? behindSequence(file, position, encoding)
                                                     : element.value + element.length;
    }
    return {};
}
