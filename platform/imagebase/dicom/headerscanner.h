#pragma once

#include "elementcursor.h"
#include "headervalues.h"

/**
 * Reads the header of well formed files fast: file meta information, then a data set in explicit or implicit
 * little endian (inflated first where it is deflated). It gives a whole answer or none: at anything unusual
 * it says so, and what it has put into the values is to be forgotten. Never reads pixels.
 */
class HeaderScanner
{
public:
    /// @return true where values hold a media directory, or an object with three valid UIDs
    static bool scan(FileWindow &file, HeaderValues &values);

    /// The offset of the mark of a file with meta information, which has a preamble of this length before it.
    static constexpr qint64 markOffset = 128;
    static bool hasMark(FileWindow &file);

private:
    HeaderScanner(FileWindow &file, HeaderValues &values);

    bool readMeta();
    ElementCursor::Encoding actualEncoding();
    bool readDataSet(FileWindow &file, qint64 position, ElementCursor::Encoding encoding);
    bool readDeflated();
    bool take(FileWindow &file, const WantedElement &wanted, const ElementPlace &element);

    FileWindow &m_file;
    HeaderValues &m_values;
    qint64 m_dataSet = 0;
    QByteArray m_transferSyntax;
};
