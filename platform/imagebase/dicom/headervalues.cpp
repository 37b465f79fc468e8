#include "headervalues.h"

#include "dicomreader.h"
#include "personname.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

bool isBinary(Attribute attribute)
{
    switch (attribute) {
    case Attribute::Rows:
    case Attribute::Columns:
    case Attribute::SamplesPerPixel:
    case Attribute::BitsAllocated:
    case Attribute::BitsStored:
    case Attribute::HighBit:
    case Attribute::PixelRepresentation:
        return true;
    default:
        return false;
    }
}

bool isPersonName(Attribute attribute)
{
    switch (attribute) {
    case Attribute::PatientName:
    case Attribute::ReferringPhysicianName:
    case Attribute::PerformingPhysicianName:
    case Attribute::OperatorsName:
        return true;
    default:
        return false;
    }
}

std::vector<WantedElement> makeWantedElements()
{
    std::vector<WantedElement> wanted;
    for (const AttributeInfo &info : attributeTable()) {
        wanted.push_back(
            {info.tag, info.attribute, info.kind, isBinary(info.attribute), isPersonName(info.attribute)});
    }
    std::sort(wanted.begin(), wanted.end(),
        [](const WantedElement &a, const WantedElement &b) { return a.tag < b.tag; });
    return wanted;
}

constexpr int longestRemembered = 256;

bool isPadding(char c)
{
    return c == ' ' || c == '\0';
}

/// The first of several values where it is a plain number, else null.
QString firstNumber(const char *bytes, int length)
{
    QByteArray number(bytes, static_cast<int>(std::find(bytes, bytes + length, '\\') - bytes));
    number = number.trimmed();
    if (number.startsWith('+')) {
        number.remove(0, 1);
    }
    const bool plain = std::all_of(number.cbegin(), number.cend(), [](char c) {
        return (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+' || c == 'e' || c == 'E';
    });
    bool converts = false;
    const double value = plain ? number.toDouble(&converts) : 0;
    return converts && std::isfinite(value) ? QString::fromLatin1(number) : QString();
}

} // namespace

const std::vector<WantedElement> &wantedElements()
{
    static const std::vector<WantedElement> wanted = makeWantedElements();
    return wanted;
}

void HeaderValues::begin()
{
    m_header = DicomHeader();
    m_mediaDirectory = false;
    m_characterSet.select(QByteArray());
    m_characterSetName.clear();
}

void HeaderValues::setCharacterSet(const char *bytes, int length)
{
    m_characterSetName = QByteArray(bytes, qMin(length, maximumBytes));
    m_characterSet.select(m_characterSetName);
}

void HeaderValues::setText(const WantedElement &element, const char *bytes, int length)
{
    length = qMin(length, maximumBytes);
    while (length > 0 && isPadding(bytes[length - 1])) {
        --length;
    }
    while (length > 0 && isPadding(*bytes)) {
        ++bytes;
        --length;
    }
    if (length > 0) {
        m_header[element.attribute] = value(element, bytes, length);
    }
}

void HeaderValues::setNumber(const WantedElement &element, quint16 number)
{
    m_header[element.attribute] = QString::number(number);
}

/// Files of a series repeat most of their values: a value that comes again shares the text of the last one.
QString HeaderValues::value(const WantedElement &element, const char *bytes, int length)
{
    Remembered &last = m_remembered[static_cast<std::size_t>(element.attribute)];
    const bool again = last.bytes.size() == length
        && std::memcmp(last.bytes.constData(), bytes, std::size_t(length)) == 0
        && last.characterSet == m_characterSetName;
    if (again) {
        return last.text;
    }
    QString result =
        element.kind == ValueKind::Number ? firstNumber(bytes, length) : text(element, bytes, length);
    if (length <= longestRemembered) {
        last = {QByteArray(bytes, length), m_characterSetName, result};
    }
    return result;
}

QString HeaderValues::text(const WantedElement &element, const char *bytes, int length)
{
    const bool severalValues = element.attribute != Attribute::PatientComments;
    QString decoded = m_characterSet.decode(bytes, length,
        element.personName  ? CharacterSet::Form::PersonName
            : severalValues ? CharacterSet::Form::Values
                            : CharacterSet::Form::Paragraph);
    if (std::memchr(bytes, '\0', std::size_t(length))) {
        decoded.remove(QChar::Null); // SQL texts and file names end there
    }
    decoded = std::move(decoded).trimmed();
    if (element.personName) {
        decoded = tidyPersonName(decoded);
    }
    return decoded.isEmpty() ? QString() : decoded;
}

bool HeaderValues::isIdentified() const
{
    return DicomReader::isUid(m_header[Attribute::StudyInstanceUID])
        && DicomReader::isUid(m_header[Attribute::SeriesInstanceUID])
        && DicomReader::isUid(m_header[Attribute::SOPInstanceUID]);
}
