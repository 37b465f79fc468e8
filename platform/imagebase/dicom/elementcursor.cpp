#include "elementcursor.h"

#include <QtEndian>

namespace {

constexpr quint32 itemTag = 0xfffee000;
constexpr quint32 itemEndTag = 0xfffee00d;
constexpr quint32 sequenceEndTag = 0xfffee0dd;
constexpr quint16 delimiterGroup = 0xfffe;
constexpr quint16 sequenceVr = vrCode('S', 'Q');
constexpr quint16 unknownVr = vrCode('U', 'N');
/// Far more than any object has; above it the file is somebody's trap.
constexpr int maximumDepth = 1 << 16;

bool isLetters(quint16 vr)
{
    const auto isLetter = [](int c) { return c >= 'A' && c <= 'Z'; };
    return isLetter(vr >> 8) && isLetter(vr & 0xff);
}

} // namespace

LengthField lengthField(quint16 vr)
{
    switch (vr) {
    case vrCode('A', 'E'):
    case vrCode('A', 'S'):
    case vrCode('A', 'T'):
    case vrCode('C', 'S'):
    case vrCode('D', 'A'):
    case vrCode('D', 'S'):
    case vrCode('D', 'T'):
    case vrCode('F', 'D'):
    case vrCode('F', 'L'):
    case vrCode('I', 'S'):
    case vrCode('L', 'O'):
    case vrCode('L', 'T'):
    case vrCode('P', 'N'):
    case vrCode('S', 'H'):
    case vrCode('S', 'L'):
    case vrCode('S', 'S'):
    case vrCode('S', 'T'):
    case vrCode('T', 'M'):
    case vrCode('U', 'I'):
    case vrCode('U', 'L'):
    case vrCode('U', 'S'):
        return LengthField::Short;
    case vrCode('O', 'B'):
    case vrCode('O', 'D'):
    case vrCode('O', 'F'):
    case vrCode('O', 'L'):
    case vrCode('O', 'V'):
    case vrCode('O', 'W'):
    case vrCode('S', 'Q'):
    case vrCode('S', 'V'):
    case vrCode('U', 'C'):
    case vrCode('U', 'N'):
    case vrCode('U', 'R'):
    case vrCode('U', 'T'):
    case vrCode('U', 'V'):
        return LengthField::Long;
    default:
        return LengthField::Unknown;
    }
}

ElementCursor::ElementCursor(FileWindow &file, qint64 position, Encoding encoding)
    : m_file(file)
    , m_position(position)
    , m_encoding(encoding)
{ }

bool ElementCursor::peek(ElementPlace &element)
{
    while (readHeader(element, m_encoding == Encoding::Implicit)) {
        if ((element.tag >> 16) != delimiterGroup) {
            return true;
        }
        if (element.length != 0) {
            break;
        }
        m_position = element.value;
    }
    return false;
}

bool ElementCursor::readHeader(ElementPlace &element, bool implicit)
{
    const uchar *bytes = m_file.at(m_position, shortHeader);
    if (!bytes) {
        return false;
    }
    element.tag = (quint32(qFromLittleEndian<quint16>(bytes)) << 16) | qFromLittleEndian<quint16>(bytes + 2);
    const quint16 letters = qFromBigEndian<quint16>(bytes + 4);
    if (implicit || (element.tag >> 16) == delimiterGroup) {
        element.vr = 0;
        element.length = qFromLittleEndian<quint32>(bytes + 4);
        element.value = m_position + shortHeader;
        // Explicit data in a file that says implicit: letters where a length belongs.
        if (implicit && lengthField(letters) != LengthField::Unknown) {
            return false;
        }
    } else {
        element.vr = letters;
        if (!readExplicit(bytes, element)) {
            return false;
        }
    }
    return element.length == undefinedLength
        || (element.length % 2 == 0 && element.length <= m_file.size() - element.value);
}

bool ElementCursor::readExplicit(const uchar *bytes, ElementPlace &element)
{
    LengthField field = lengthField(element.vr);
    if (field == LengthField::Unknown && m_encoding == Encoding::Meta && isLetters(element.vr)) {
        field = LengthField::Short;
    }
    switch (field) {
    case LengthField::Short:
        element.length = qFromLittleEndian<quint16>(bytes + 6);
        element.value = m_position + shortHeader;
        return true;
    case LengthField::Long:
        bytes = m_file.at(m_position, longHeader);
        if (!bytes || qFromLittleEndian<quint16>(bytes + 6) != 0) {
            return false;
        }
        element.length = qFromLittleEndian<quint32>(bytes + 8);
        element.value = m_position + longHeader;
        return true;
    case LengthField::Unknown:
        break;
    }
    return false;
}

bool ElementCursor::skip(const ElementPlace &element)
{
    m_position = element.value;
    if (element.length != undefinedLength) {
        m_position += element.length;
        return true;
    }
    if (m_encoding == Encoding::Implicit) {
        return skipSequence(true);
    }
    if (element.vr == sequenceVr) {
        return skipSequence(false);
    }
    // Unknown with undefined length is a sequence in implicit encoding, whatever the file's own is.
    return element.vr == unknownVr && skipSequence(true);
}

// Only sequences and items of undefined length are entered, so the way back is a matter of counting: levels
// alternate between sequence and item, and below an unknown one all is implicit.
bool ElementCursor::skipSequence(bool implicit)
{
    int depth = 1; // odd inside a sequence, even inside an item
    int implicitFrom = implicit ? 1 : maximumDepth;
    while (depth > 0 && depth < maximumDepth) {
        ElementPlace element;
        if (!readHeader(element, depth >= implicitFrom)) {
            return false;
        }
        const bool inItem = depth % 2 == 0;
        m_position = element.value;
        if (element.tag == (inItem ? itemEndTag : sequenceEndTag)) {
            --depth;
            implicitFrom = depth < implicitFrom ? maximumDepth : implicitFrom;
            continue;
        }
        if (inItem == ((element.tag >> 16) == delimiterGroup) || (!inItem && element.tag != itemTag)) {
            return false;
        }
        if (element.length != undefinedLength) {
            m_position += element.length;
            continue;
        }
        const bool unknown = element.vr == unknownVr;
        if (inItem && depth < implicitFrom && element.vr != sequenceVr && !unknown) {
            return false;
        }
        ++depth;
        implicitFrom = unknown ? qMin(implicitFrom, depth) : implicitFrom;
    }
    return depth == 0;
}
