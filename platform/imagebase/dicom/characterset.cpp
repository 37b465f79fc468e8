#include "characterset.h"

#include "dcmtklog.h"
#include "iso2022decoder.h"

#include <QTextCodec>

#include <cstring>
#include <numeric>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcspchrs.h>

namespace {

constexpr char escape = '\x1b';
constexpr int utf8Mib = 106;
/// Sets seen before they are thrown away: a hostile folder may bring a new one with every file.
constexpr std::size_t keptConverters = 64;

bool isPlain(const char *bytes, int length)
{
    const char highBits =
        std::accumulate(bytes, bytes + length, '\0', [](char a, char b) { return char(a | b); });
    return (highBits & 0x80) == 0 && !std::memchr(bytes, escape, std::size_t(length));
}

const char *delimiters(CharacterSet::Form form)
{
    switch (form) {
    case CharacterSet::Form::PersonName:
        return "\\^=";
    case CharacterSet::Form::Values:
        return "\\";
    case CharacterSet::Form::Paragraph:
        break;
    }
    return "";
}

/// What is not declared, or not as declared, is UTF-8 where it can be, and otherwise Latin 1, which takes any
/// byte.
QString guess(const QByteArray &text)
{
    QTextCodec::ConverterState state;
    const QString unicode =
        QTextCodec::codecForMib(utf8Mib)->toUnicode(text.constData(), text.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0 ? unicode : QString::fromLatin1(text);
}

/// The terms as they should be written: a few makers write "ISO-IR 100" or "ISO_IR_100".
QByteArrayList readTerms(const QByteArray &value)
{
    QByteArrayList terms = value.toUpper().split('\\');
    for (QByteArray &term : terms) {
        term = term.replace('\0', ' ').trimmed();
        for (const char *spelling : {"ISO-IR ", "ISO IR ", "ISO_IR_", "ISO-IR-"}) {
            if (term.startsWith(spelling)) {
                term = "ISO_IR " + term.mid(static_cast<int>(qstrlen(spelling)));
            }
        }
    }
    return terms;
}

} // namespace

/// One Specific Character Set with all that it takes to convert from it.
class CharacterSet::Converter
{
public:
    explicit Converter(const QByteArray &value);

    QString decode(const QByteArray &text, Form form);

private:
    QString byDcmtk(const QByteArray &text, Form form);

    const QByteArrayList m_terms;
    const Iso2022Decoder m_iso2022;
    DcmSpecificCharacterSet m_dcmtk;
    bool m_dcmtkKnows = false;
};

CharacterSet::Converter::Converter(const QByteArray &value)
    : m_terms(readTerms(value))
    , m_iso2022(m_terms)
{
    silenceDcmtk();
    const QByteArray terms = m_terms.join('\\');
    m_dcmtkKnows = m_dcmtk.selectCharacterSet(OFString(terms.constData(), std::size_t(terms.size()))).good();
}

QString CharacterSet::Converter::decode(const QByteArray &text, Form form)
{
    if (m_terms.size() == 1 && m_terms.first() == "ISO_IR 192") {
        return QString::fromUtf8(text);
    }
    if (m_terms.size() == 1 && m_terms.first() == "ISO_IR 100") {
        return QString::fromLatin1(text);
    }
    QString decoded = byDcmtk(text, form);
    if (decoded.isNull() && !m_dcmtkKnows) {
        decoded = m_iso2022.decode(text, delimiters(form));
    }
    return decoded.isNull() ? guess(text) : decoded;
}

QString CharacterSet::Converter::byDcmtk(const QByteArray &text, Form form)
{
    OFString unicode;
    if (!m_dcmtkKnows
        || m_dcmtk.convertString(text.constData(), std::size_t(text.size()), unicode, delimiters(form))
               .bad()) {
        return QString();
    }
    return QString::fromUtf8(unicode.data(), static_cast<int>(unicode.size()));
}

CharacterSet::CharacterSet() = default;
CharacterSet::~CharacterSet() = default;

void CharacterSet::select(const QByteArray &value)
{
    if (value == m_selected) {
        return;
    }
    m_selected = QByteArray(value.constData(), value.size()); // the caller's bytes may not last
    m_converter = nullptr;
    if (value.trimmed().isEmpty()) {
        return;
    }
    if (m_converters.size() >= keptConverters) {
        m_converters.clear();
    }
    std::unique_ptr<Converter> &converter = m_converters[m_selected];
    if (!converter) {
        converter = std::make_unique<Converter>(m_selected);
    }
    m_converter = converter.get();
}

QString CharacterSet::decode(const char *bytes, int length, Form form)
{
    if (isPlain(bytes, length)) {
        return QString::fromLatin1(bytes, length);
    }
    const QByteArray text = QByteArray::fromRawData(bytes, length);
    return m_converter ? m_converter->decode(text, form) : guess(text);
}
