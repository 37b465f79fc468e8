#include "headerscanner.h"

#include "dicomuids.h"
#include "inflate.h"

#include <QtEndian>

#include <cstring>

namespace {

constexpr char mark[] = {'D', 'I', 'C', 'M'};
constexpr quint16 metaGroup = 0x0002;
constexpr quint32 metaLengthTag = 0x00020000;
constexpr quint32 mediaStorageClassTag = 0x00020002;
constexpr quint32 transferSyntaxTag = 0x00020010;
constexpr quint32 characterSetTag = 0x00080005;
constexpr quint16 uidVr = vrCode('U', 'I');
constexpr quint16 unsignedShort = vrCode('U', 'S');

bool isTextVr(quint16 vr)
{
    switch (vr) {
    case vrCode('A', 'E'):
    case vrCode('A', 'S'):
    case vrCode('C', 'S'):
    case vrCode('D', 'A'):
    case vrCode('D', 'S'):
    case vrCode('D', 'T'):
    case vrCode('I', 'S'):
    case vrCode('L', 'O'):
    case vrCode('L', 'T'):
    case vrCode('P', 'N'):
    case vrCode('S', 'H'):
    case vrCode('S', 'T'):
    case vrCode('T', 'M'):
    case vrCode('U', 'C'):
    case vrCode('U', 'I'):
    case vrCode('U', 'R'):
    case vrCode('U', 'T'):
        return true;
    default:
        return false;
    }
}

QByteArray uidText(const uchar *bytes, quint32 length)
{
    while (length > 0 && (bytes[length - 1] == '\0' || bytes[length - 1] == ' ')) {
        --length;
    }
    return {reinterpret_cast<const char *>(bytes), static_cast<int>(length)};
}

} // namespace

HeaderScanner::HeaderScanner(FileWindow &file, HeaderValues &values)
    : m_file(file)
    , m_values(values)
{ }

bool HeaderScanner::hasMark(FileWindow &file)
{
    const uchar *bytes = file.at(markOffset, sizeof mark);
    return bytes && std::memcmp(bytes, mark, sizeof mark) == 0;
}

bool HeaderScanner::scan(FileWindow &file, HeaderValues &values)
{
    // From the start, so that one read brings preamble and header.
    if (!file.at(0, markOffset + qint64(sizeof mark)) || !hasMark(file)) {
        return false;
    }
    HeaderScanner scanner(file, values);
    if (!scanner.readMeta()) {
        return false;
    }
    if (values.isMediaDirectory()) {
        return true;
    }
    const QByteArray &syntax = scanner.m_transferSyntax;
    bool good = false;
    if (syntax == DicomUid::implicitLittleEndian) {
        good = scanner.readDataSet(file, scanner.m_dataSet, ElementCursor::Encoding::Implicit);
    } else if (syntax == DicomUid::deflated) {
        good = scanner.readDeflated();
    } else if (syntax.startsWith(DicomUid::transferSyntaxRoot) && syntax != DicomUid::bigEndian
        && syntax != DicomUid::referencedDeflated) {
        good = scanner.readDataSet(file, scanner.m_dataSet, scanner.actualEncoding());
    }
    return good && values.isIdentified();
}

bool HeaderScanner::readMeta()
{
    ElementCursor cursor(m_file, markOffset + qint64(sizeof mark), ElementCursor::Encoding::Meta);
    qint64 declaredEnd = -1;
    for (;;) {
        const uchar *bytes = m_file.at(cursor.position(), sizeof(quint16));
        if (!bytes || qFromLittleEndian<quint16>(bytes) != metaGroup) {
            break;
        }
        ElementPlace element;
        if (!cursor.peek(element) || !cursor.skip(element)) {
            return false;
        }
        bytes =
            element.length <= HeaderValues::maximumBytes ? m_file.at(element.value, element.length) : nullptr;
        if (!bytes) {
            return false;
        }
        if (element.tag == metaLengthTag && element.length == sizeof(quint32)) {
            declaredEnd = element.value + element.length + qFromLittleEndian<quint32>(bytes);
        } else if (element.tag == transferSyntaxTag && element.vr == uidVr) {
            m_transferSyntax = uidText(bytes, element.length);
        } else if (element.tag == mediaStorageClassTag
            && uidText(bytes, element.length) == DicomUid::mediaDirectory) {
            m_values.setMediaDirectory();
        }
    }
    m_dataSet = cursor.position();
    return !m_transferSyntax.isEmpty() && (declaredEnd < 0 || declaredEnd == m_dataSet);
}

// Some writers announce a compressed syntax, hence an explicit one, before a data set that is implicit.
ElementCursor::Encoding HeaderScanner::actualEncoding()
{
    const uchar *bytes = m_file.at(m_dataSet, 8);
    const auto isLetter = [](uchar c) { return c >= 'A' && c <= 'Z'; };
    return bytes && !isLetter(bytes[4]) && !isLetter(bytes[5]) ? ElementCursor::Encoding::Implicit
                                                               : ElementCursor::Encoding::Explicit;
}

bool HeaderScanner::readDataSet(FileWindow &file, qint64 position, ElementCursor::Encoding encoding)
{
    const std::vector<WantedElement> &wantedList = wantedElements();
    auto wanted = wantedList.begin();
    m_values.setText(*wanted++, m_transferSyntax.constData(), m_transferSyntax.size());
    ElementCursor cursor(file, position, encoding);
    quint32 last = 0;
    while (!cursor.atEnd()) {
        ElementPlace element;
        if (!cursor.peek(element) || element.tag <= last || (element.tag >> 16) <= metaGroup) {
            return false;
        }
        last = element.tag;
        while (wanted != wantedList.end() && wanted->tag < element.tag) {
            ++wanted;
        }
        if (wanted == wantedList.end()) {
            return true;
        }
        if (wanted->tag == element.tag || element.tag == characterSetTag) {
            const WantedElement characterSet{
                characterSetTag, Attribute::Count, ValueKind::Code, false, false};
            if (!take(file, element.tag == characterSetTag ? characterSet : *wanted, element)) {
                return false;
            }
        }
        if (!cursor.skip(element)) {
            return false;
        }
    }
    return true;
}

bool HeaderScanner::take(FileWindow &file, const WantedElement &wanted, const ElementPlace &element)
{
    const bool fits = element.vr == 0 || (wanted.binary ? element.vr == unsignedShort : isTextVr(element.vr));
    if (!fits || element.length > HeaderValues::maximumBytes) {
        return false;
    }
    const uchar *bytes = file.at(element.value, element.length);
    if (!bytes) {
        return false;
    }
    const auto *text = reinterpret_cast<const char *>(bytes);
    if (wanted.tag == characterSetTag) {
        m_values.setCharacterSet(text, static_cast<int>(element.length));
    } else if (!wanted.binary) {
        m_values.setText(wanted, text, static_cast<int>(element.length));
    } else if (element.length >= sizeof(quint16)) {
        m_values.setNumber(wanted, qFromLittleEndian<quint16>(bytes));
    }
    return true;
}

bool HeaderScanner::readDeflated()
{
    const qint64 length = qMin(m_file.size() - m_dataSet, inflateInputLimit);
    const uchar *bytes = m_file.at(m_dataSet, length);
    if (!bytes) {
        return false;
    }
    FileWindow inflated;
    inflated.openBytes(inflateRaw(bytes, length));
    return readDataSet(inflated, 0, ElementCursor::Encoding::Explicit);
}
