#include "pixelplace.h"

#include "elementcursor.h"

#include <QtEndian>

namespace {

constexpr quint32 floatPixels = 0x7fe00008;
constexpr quint32 doublePixels = 0x7fe00009;
constexpr quint32 integerPixels = 0x7fe00010;
constexpr quint32 frameOffsets = 0x7fe00001; ///< tables of offsets stand before the pixels
constexpr quint32 frameLengths = 0x7fe00002;
constexpr quint32 pixelsLength = 0x7fe00003;
constexpr quint32 pixelGroup = 0x7fe0;
constexpr quint32 fragmentTag = 0xfffee000;
constexpr quint32 fragmentsEnd = 0xfffee0dd;

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

/// Behind the fragments that begin there; -1 where their end is not found.
qint64 behindFragments(FileWindow &file, qint64 position)
{
    ElementPlace item;
    while (readHeader(file, position, {false, false}, item) && item.length != undefinedLength) {
        position = item.value + item.length;
        if (item.tag == fragmentsEnd) {
            return item.value;
        }
        if (item.tag != fragmentTag) {
            break;
        }
    }
    return -1;
}

/// Whether an element of the group is one that is known, and of its kind.
bool isOfPixels(const ElementPlace &element, ElementEncoding encoding)
{
    const auto is = [&](const char *vr) {
        return !encoding.isExplicit || element.vr == vrCode(vr[0], vr[1]);
    };
    switch (element.tag) {
    case frameOffsets:
    case frameLengths:
        return is("OV") && element.length % sizeof(quint64) == 0;
    case pixelsLength:
        return is("UV") && element.length == sizeof(quint64);
    case floatPixels:
        return is("OF");
    case doublePixels:
        return is("OD");
    case integerPixels:
        return is("OB") || is("OW") || is("UN");
    default:
        return false;
    }
}

} // namespace

PixelBytes findPixelBytes(FileWindow &file, qint64 taken, ElementEncoding encoding)
{
    PixelBytes found;
    if (taken >= file.size()) {
        return found;
    }
    qint64 position = startOfHeader(file, taken, encoding);
    ElementPlace element;
    while (readHeader(file, position, encoding, element) && element.tag >> 16 == pixelGroup
        && element.tag <= integerPixels) {
        const bool isOpen = element.length == undefinedLength;
        const qint64 end =
            isOpen ? behindFragments(file, element.value) : element.value + qint64(element.length);
        if (end < 0 || end > file.size()) {
            found.isWhole = false;
            break;
        }
        if (isOfPixels(element, encoding)) {
            found.ranges.append({position, end - position, element.value, element.tag});
            found.isEncapsulated = found.isEncapsulated || isOpen;
        }
        position = end;
    }
    return found;
}

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
