#pragma once

#include "filewindow.h"

/// A data element as it stands in a file: where, what and how long; its value is not read.
struct ElementPlace
{
    quint32 tag = 0; ///< group in the high 16 bits
    quint16 vr = 0; ///< both letters, the first in the high byte; 0 where the encoding has none
    quint32 length = 0;
    qint64 value = 0; ///< offset in the file
};

constexpr quint16 vrCode(char first, char second)
{
    return static_cast<quint16>((static_cast<quint16>(first) << 8) | static_cast<quint16>(second));
}

/// The length of an element whose end is marked instead.
constexpr quint32 undefinedLength = 0xffffffff;
/// Bytes of an element's header: implicit ones and those with a short length field, and the others.
constexpr qint64 shortHeader = 8;
constexpr qint64 longHeader = 12;

/// How an explicit VR writes its length: in two bytes, or in four after two reserved ones.
enum class LengthField : quint8 { Unknown, Short, Long };
LengthField lengthField(quint16 vr);

/**
 * Walks over the elements of a little endian data set one by one, stepping over nested data without
 * recursion. It stops at the first thing that is not plain: unknown VRs, odd lengths, lengths beyond the
 * file, stray delimiters.
 */
class ElementCursor
{
public:
    /// Meta is explicit as well, but with private VRs taken as the short ones that they resemble.
    enum class Encoding : quint8 { Explicit, Implicit, Meta };

    ElementCursor(FileWindow &file, qint64 position, Encoding encoding);

    /// Reads the header of the element at the cursor and stays before it; empty delimiters that belong to no
    /// sequence are stepped over. False at the end of the file and at what is not plain.
    bool peek(ElementPlace &element);
    /// Moves behind an element that peek() gave.
    bool skip(const ElementPlace &element);

    qint64 position() const { return m_position; }
    bool atEnd() const { return m_position == m_file.size(); }

private:
    bool readHeader(ElementPlace &element, bool implicit);
    bool readExplicit(const uchar *bytes, ElementPlace &element);
    bool skipSequence(bool implicit);

    FileWindow &m_file;
    qint64 m_position;
    Encoding m_encoding;
};
