#include "keptvalues.h"

#include "datasetitems.h"
#include "dummyvalue.h"
#include "supplementtable.h"
#include "valuegrammar.h"

#include <algorithm>

namespace {

using ElementText::isText;
using ElementText::tagOf;

bool isStandardUid(const QByteArray &uid)
{
    return uid.startsWith("1.2.840.10008.") && dcmFindNameOfUID(uid.constData(), nullptr) != nullptr;
}

/// Whether a code is of a terminology that is published, whose words are nobody's.
bool isOfStandardScheme(DcmItem &item)
{
    static const QList<QByteArray> schemes{"DCM", "SCT", "SRT", "SNM3", "99SDM", "UCUM", "LN", "RADLEX",
        "FMA", "MSH", "NCIt", "UMLS", "BI", "I9", "I9C", "I10", "I10P", "ISO3166_1", "RFC5646", "ISO639_1",
        "ISO639_2", "NEU", "ITIS_TSN", "PUBCHEM_CID", "MDC", "CPT4", "CD2", "C4"};
    return schemes.contains(ElementText::of(item, DCM_CodingSchemeDesignator).trimmed());
}

/// Applied to each of the values.
template <typename Mend>
QByteArray mendedEach(const QByteArray &values, Mend mend)
{
    QByteArray result;
    for (const QByteArray &value : values.split('\\')) {
        result += mend(value) + '\\';
    }
    result.chop(1);
    return result;
}

/// Whether a number can be somebody's: long, and whole.
bool isNumberOfSomebody(const QByteArray &value)
{
    return value.size() > IdentifyingValues::leastBytes
        && std::all_of(value.cbegin(), value.cend(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

KeptValues::KeptValues(const IdentifyingValues &values, TextCleaner &texts, const Pseudonyms &pseudonyms)
    : m_values(values)
    , m_texts(texts)
    , m_pseudonyms(pseudonyms)
{ }

std::optional<QByteArray> KeptValues::mended(DcmItem &item, DcmElement &element)
{
    const DcmEVR vr = element.getVR();
    constexpr quint32 lastCreator = 0x00ff;
    if (element.getGTag() % 2 != 0 && element.getETag() <= lastCreator) {
        return {}; // who reserves the block of a maker: another name would orphan it
    }
    if (!ElementText::isString(vr)) {
        return isTellingBytes(element) ? std::optional<QByteArray>(QByteArray()) : std::nullopt;
    }
    if (element.getLengthField() > ElementText::longest) {
        return QByteArray();
    }
    const QByteArray text = ElementText::of(element);
    const QByteArray result = text.isEmpty() ? text
        : ValueGrammar::isKnown(vr)          ? mendedNumbers(element, text)
        : vr == EVR_CS                       ? mendedTerms(text)
                                             : mendedText(item, element, text);
    return result == text ? std::nullopt : std::optional<QByteArray>(result);
}

QByteArray KeptValues::mendedText(DcmItem &item, DcmElement &element, const QByteArray &text)
{
    const bool isCode = DatasetItems::isCode(tagOf(element));
    const bool isFree = isText(element.getVR()) && !isCode;
    const bool isTelling = isFree ? m_values.isWithin(text) : m_values.isPersonWithin(text);
    if (isTelling || m_values.isUidWithin(text)) {
        return {};
    }
    if (isCode && isOfStandardScheme(item)) {
        return text;
    }
    const QStringList values = m_texts.decoded(text).split(QLatin1Char('\\'));
    const bool isWhole = std::any_of(
        values.cbegin(), values.cend(), [this](const QString &value) { return m_values.isPerson(value); });
    return isWhole ? QByteArray() : m_texts.withoutPersons(text);
}

QByteArray KeptValues::mendedTerms(const QByteArray &terms)
{
    return mendedEach(terms, [this](const QByteArray &term) {
        const QByteArray plain = term.trimmed();
        const bool isShort = plain.size() < IdentifyingValues::leastLetters;
        if (isShort || SupplementTable::instance().isTerm(plain)) {
            return term;
        }
        const bool isTelling = m_values.isPersonWithin(plain) || m_values.isPerson(m_texts.decoded(plain))
            || m_texts.withoutPersons(plain) != plain;
        return isTelling ? QByteArray(DummyValue::text) : term;
    });
}

QByteArray KeptValues::mendedNumbers(DcmElement &element, const QByteArray &numbers)
{
    const DcmEVR vr = element.getVR();
    return mendedEach(numbers, [this, vr](const QByteArray &number) {
        const QByteArray plain = number.trimmed();
        if (vr == EVR_UI) {
            return ValueGrammar::isRight(vr, plain) && !m_values.isUidWithin(plain) ? number : newUids(plain);
        }
        const bool isTelling = isNumberOfSomebody(plain)
            && (m_values.isPerson(QString::fromLatin1(plain)) || m_values.isPersonWithin(plain))
            && (vr == EVR_IS || vr == EVR_DS);
        return ValueGrammar::isRight(vr, plain) && !isTelling ? number : DummyValue::textFor(vr);
    });
}

/// Bytes that may be a text all the same; numbers are none.
bool KeptValues::isTellingBytes(DcmElement &element) const
{
    const bool isOfMaker = element.getGTag() % 2 != 0;
    const bool isLong = element.getLengthField() > ElementText::longest;
    const DcmEVR vr = element.getVR();
    if (!isOfMaker && (vr != EVR_OB || isLong)) {
        return false;
    }
    if (isLong) {
        return true;
    }
    Uint8 *bytes = nullptr;
    Uint16 *words = nullptr;
    if (vr == EVR_OW ? element.getUint16Array(words).bad() : element.getUint8Array(bytes).bad()) {
        return false; // numbers
    }
    const char *first = words ? reinterpret_cast<const char *>(words) : reinterpret_cast<const char *>(bytes);
    const QByteArray value = QByteArray::fromRawData(first, first ? int(element.getLengthField()) : 0);
    return m_values.isPersonWithin(value) || m_values.isUidWithin(value);
}

QByteArray KeptValues::newUids(const QByteArray &uids) const
{
    return mendedEach(uids, [this](const QByteArray &uid) {
        const QByteArray plain = uid.trimmed();
        return plain.isEmpty() || isStandardUid(plain) ? plain : m_pseudonyms.uid(plain);
    });
}
