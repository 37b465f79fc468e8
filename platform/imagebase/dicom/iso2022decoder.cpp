#include "iso2022decoder.h"

#include <QTextCodec>

#include <cstring>

namespace {

constexpr char escape = '\x1b';
constexpr char katakana[] = "";
constexpr char jisX0208[] = "EUC-JP";
constexpr char jisX0212[] = "EUC-JP supplement"; // the same converter, each character behind a single shift
constexpr char singleShift3 = '\x8f';
constexpr uchar firstKatakana = 0xa1;
constexpr uchar lastKatakana = 0xdf;
constexpr char16_t firstHalfWidthKatakana = 0xff61;

struct Designation
{
    const char *term; ///< null where no term starts with it
    const char *sequence; ///< without the escape
    const char *codec; ///< null for ASCII
    int bytes;
    bool high;
};

constexpr Designation designations[] = {
    {nullptr, "(B", nullptr, 1, false},
    {nullptr, "(J", nullptr, 1, false}, // differs from ASCII in the yen sign and the overline only
    {"13", ")I", katakana, 1, true},
    {"87", "$B", jisX0208, 2, false},
    {nullptr, "$@", jisX0208, 2, false},
    {"159", "$(D", jisX0212, 2, false},
    {"149", "$)C", "EUC-KR", 2, true},
    {"58", "$)A", "GB18030", 2, true},
    {"100", "-A", "ISO-8859-1", 1, true},
    {"101", "-B", "ISO-8859-2", 1, true},
    {"109", "-C", "ISO-8859-3", 1, true},
    {"110", "-D", "ISO-8859-4", 1, true},
    {"144", "-L", "ISO-8859-5", 1, true},
    {"127", "-G", "ISO-8859-6", 1, true},
    {"126", "-F", "ISO-8859-7", 1, true},
    {"138", "-H", "ISO-8859-8", 1, true},
    {"148", "-M", "ISO-8859-9", 1, true},
    {"166", "-T", "TIS-620", 1, true},
};

bool appendKatakana(const QByteArray &run, QString &out)
{
    for (const char byte : run) {
        const auto code = static_cast<uchar>(byte);
        if (code < firstKatakana || code > lastKatakana) {
            return false;
        }
        out += QChar(firstHalfWidthKatakana + (code - firstKatakana));
    }
    return true;
}

/// The converters know these sets in the upper half only.
QByteArray inUpperHalf(const QByteArray &run, bool supplement)
{
    QByteArray raised;
    for (int i = 0; i < run.size(); ++i) {
        if (supplement && i % 2 == 0) {
            raised += singleShift3;
        }
        raised += static_cast<char>(run[i] | 0x80);
    }
    return raised;
}

} // namespace

Iso2022Decoder::Iso2022Decoder(const QByteArrayList &terms)
    : m_start{{nullptr, 1}, startingHigh(terms.value(0))}
{ }

Iso2022Decoder::Half Iso2022Decoder::startingHigh(const QByteArray &term)
{
    for (const Designation &designation : designations) {
        if (designation.high && designation.term && term.endsWith(QByteArray(" ") + designation.term)) {
            return {designation.codec, designation.bytes};
        }
    }
    return {nullptr, 1};
}

int Iso2022Decoder::applyEscape(const char *text, int length, State &state)
{
    for (const Designation &designation : designations) {
        const int size = static_cast<int>(std::strlen(designation.sequence));
        if (size <= length && std::memcmp(text, designation.sequence, static_cast<std::size_t>(size)) == 0) {
            (designation.high ? state.high : state.low) = {designation.codec, designation.bytes};
            return size;
        }
    }
    return 0;
}

QString Iso2022Decoder::decode(const QByteArray &text, const char *delimiters) const
{
    QString out;
    State state = m_start;
    for (int i = 0; i < text.size();) {
        if (text[i] == escape) {
            const int size = applyEscape(text.constData() + i + 1, text.size() - i - 1, state);
            if (size == 0) {
                return QString();
            }
            i += 1 + size;
            continue;
        }
        const auto isControl = [](char c) { return static_cast<uchar>(c) < 0x20; };
        const auto isDelimiter = [&](char c) {
            return state.low.bytes == 1 && c != '\0' && std::strchr(delimiters, c) != nullptr;
        };
        if (isControl(text[i]) || isDelimiter(text[i])) {
            out += QLatin1Char(text[i++]);
            state = m_start;
            continue;
        }
        const bool high = (text[i] & 0x80) != 0;
        const int from = i;
        while (i < text.size() && ((text[i] & 0x80) != 0) == high && !isControl(text[i])
            && !isDelimiter(text[i])) {
            ++i;
        }
        if (!appendRun(text.mid(from, i - from), high ? state.high : state.low, out)) {
            return QString();
        }
    }
    return out;
}

bool Iso2022Decoder::appendRun(const QByteArray &run, const Half &half, QString &out)
{
    if (!half.codec) {
        out += QString::fromLatin1(run);
        return (run[0] & 0x80) == 0;
    }
    if (half.codec == katakana) {
        return appendKatakana(run, out);
    }
    const bool supplement = half.codec == jisX0212;
    QTextCodec *codec = QTextCodec::codecForName(supplement ? jisX0208 : half.codec);
    if (!codec || run.size() % half.bytes != 0) {
        return false;
    }
    const QByteArray raised = half.bytes == 2 ? inUpperHalf(run, supplement) : run;
    QTextCodec::ConverterState state;
    out += codec->toUnicode(raised.constData(), raised.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}
