#include "datasetcleaner.h"

#include "dummyvalue.h"
#include "elementtext.h"
#include "patientidentity.h"
#include "profiletable.h"
#include "unknownelement.h"

#include <algorithm>

namespace {

using ElementText::isText;
using ElementText::tagOf;

/// Deeper, nobody knows what it is for: it goes.
constexpr int deepest = 60;
constexpr unsigned long mostElements = 20000;
constexpr quint32 encapsulatedDocument = 0x00420011;
constexpr quint32 contentSequence = 0x0040a730;

/// In a list of their own, since they are replaced and removed meanwhile.
QVector<DcmElement *> elementsOf(DcmItem &item)
{
    QVector<DcmElement *> elements;
    for (DcmObject *object = item.nextInContainer(nullptr); object; object = item.nextInContainer(object)) {
        elements.append(static_cast<DcmElement *>(object));
    }
    return elements;
}

QVector<DcmItem *> itemsOf(DcmSequenceOfItems &sequence)
{
    QVector<DcmItem *> items;
    for (DcmObject *object = sequence.nextInContainer(nullptr); object;
         object = sequence.nextInContainer(object)) {
        items.append(static_cast<DcmItem *>(object));
    }
    return items;
}

DcmSequenceOfItems *sequenceOf(DcmElement *element)
{
    return element->getVR() == EVR_SQ ? dynamic_cast<DcmSequenceOfItems *>(element) : nullptr;
}

/// The attributes that make a code of some terminology.
bool isCode(quint32 tag)
{
    return tag >> 16 == 0x0008 && (tag & 0xffff) >= 0x0100 && (tag & 0xffff) <= 0x0122;
}

/// Whether a code string is as the standard has them: short, and in capitals.
bool isTerm(const QByteArray &values)
{
    constexpr int longest = 16;
    const QList<QByteArray> terms = values.split('\\');
    return std::all_of(terms.cbegin(), terms.cend(), [](const QByteArray &term) {
        return term.size() <= longest && std::all_of(term.cbegin(), term.cend(), [](char c) {
            return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == ' ' || c == '_';
        });
    });
}

bool isStandardUid(const QByteArray &uid)
{
    return uid.startsWith("1.2.840.10008.") && dcmFindNameOfUID(uid.constData(), nullptr) != nullptr;
}

bool isEntered(Treatment treatment)
{
    return treatment == Treatment::Enter || treatment == Treatment::EnterStrictly;
}

/// Whether what a removed attribute says is worth looking for elsewhere: codes, sizes and times are no names.
bool isTelling(DcmEVR vr)
{
    return isText(vr) || vr == EVR_PN || vr == EVR_AE || vr == EVR_DA || vr == EVR_DT;
}

/// A new element in the place of another, of the kind that the standard has there.
DcmElement *replaced(DcmItem &item, DcmElement *element)
{
    DcmElement *fresh = nullptr;
    const DcmTag tag(element->getTag().getXTag());
    if (DcmItem::newDicomElement(fresh, tag).bad() || !fresh || item.insert(fresh, OFTrue).bad()) {
        delete fresh;
        delete item.remove(element);
        return nullptr;
    }
    return fresh;
}

} // namespace

DatasetCleaner::DatasetCleaner(const DeidentifyOptions &options, const Pseudonyms &pseudonyms)
    : m_options(options)
    , m_pseudonyms(pseudonyms)
    , m_texts(m_values)
{ }

bool DatasetCleaner::clean(DcmItem &dataset)
{
    identify(dataset);
    if (!gather(dataset, 0, false)) {
        return false;
    }
    cleanItem(dataset, {});
    return true;
}

void DatasetCleaner::identify(DcmItem &dataset)
{
    const QByteArray identity = patientIdentity(dataset);
    const QString code = m_pseudonyms.code(identity);
    m_name = QString(m_options.namePattern).replace(DeidentifyOptions::placeholder(), code);
    m_id = QString(m_options.idPattern).replace(DeidentifyOptions::placeholder(), code);
    m_daysBack = m_pseudonyms.daysBack(identity);
}

void DatasetCleaner::selectCharacterSet(DcmItem &item)
{
    if (item.tagExists(DCM_SpecificCharacterSet)) {
        m_texts.setCharacterSet(ElementText::of(item, DCM_SpecificCharacterSet));
    }
}

bool DatasetCleaner::gather(DcmItem &item, int depth, bool isStrict)
{
    if (item.card() > mostElements) {
        return false;
    }
    selectCharacterSet(item);
    for (DcmElement *element : elementsOf(item)) {
        element = UnknownElement::understood(item, element);
        const bool isOfMaker = !element || element->getGTag() % 2 != 0;
        if (isOfMaker || (isCode(tagOf(*element)) && !isStrict)) {
            continue;
        }
        const Treatment treatment = treatmentOf(*element, m_options, isStrict);
        m_hadDocument = m_hadDocument || tagOf(*element) == encapsulatedDocument;
        m_hadContent = m_hadContent || tagOf(*element) == contentSequence;
        DcmSequenceOfItems *sequence = sequenceOf(element);
        if (!sequence) {
            gatherValue(*element, treatment);
            continue;
        }
        for (DcmItem *child : depth < deepest ? itemsOf(*sequence) : QVector<DcmItem *>()) {
            if (!gather(*child, depth + 1, isStrict || treatment == Treatment::EnterStrictly)) {
                return false;
            }
        }
        selectCharacterSet(item);
    }
    return true;
}

void DatasetCleaner::gatherValue(DcmElement &element, Treatment treatment)
{
    const QByteArray bytes = treatment == Treatment::Keep ? QByteArray() : ElementText::of(element);
    if (bytes.isEmpty()) {
        return;
    }
    if (treatment == Treatment::NewUid) {
        for (const QByteArray &uid : bytes.split('\\')) {
            m_values.addUid(uid.trimmed());
        }
    } else if (isTelling(element.getVR())) {
        const ProfileRule *rule = ProfileTable::instance().find(tagOf(element));
        const bool isPersonal = !rule || rule->descriptors == 0;
        m_values.add(bytes, m_texts.decoded(bytes), isPersonal && treatment != Treatment::CleanText);
    }
}

void DatasetCleaner::cleanItem(DcmItem &item, const Place &place)
{
    selectCharacterSet(item);
    for (DcmElement *element : elementsOf(item)) {
        const Treatment treatment = treatmentOf(*element, m_options, place.isStrict);
        if (isEntered(treatment) && sequenceOf(element) && place.depth < deepest) {
            enter(*sequenceOf(element),
                {place.depth + 1, treatment == Treatment::EnterStrictly, describe(*element, place).place});
            selectCharacterSet(item);
            continue;
        }
        const AttributeChange before = m_isRecording ? describe(*element, place) : AttributeChange();
        DcmElement *after = treat(item, element, isEntered(treatment) ? Treatment::Remove : treatment, place);
        record(before, after);
    }
}

void DatasetCleaner::enter(DcmSequenceOfItems &sequence, const Place &place)
{
    int number = 0;
    for (DcmItem *item : itemsOf(sequence)) {
        ++number;
        Place within = place;
        if (m_isRecording) {
            within.path += QStringLiteral("[%1] › ").arg(number);
        }
        cleanItem(*item, within);
    }
}

/// @return what stands there now; null where it is gone
DcmElement *DatasetCleaner::treat(DcmItem &item, DcmElement *element, Treatment treatment, const Place &place)
{
    const QByteArray text = ElementText::of(*element);
    switch (treatment) {
    case Treatment::Keep:
        return sweep(item, element);
    case Treatment::Empty:
        return element->isEmpty() ? element : replaced(item, element);
    case Treatment::Dummy:
        return element->isEmpty() ? element : putDummy(item, element);
    case Treatment::NewUid:
        return text.isEmpty() ? replaced(item, element) : putText(item, element, newUids(text));
    case Treatment::Pseudonym:
        return rename(item, element);
    case Treatment::Shift:
    case Treatment::CleanText: {
        const QByteArray kept = treatment == Treatment::Shift ? DummyValue::shifted(text, m_daysBack)
            : text.isEmpty()                                  ? text
                                                              : m_texts.cleaned(text);
        return kept == text  ? element
            : kept.isEmpty() ? treat(item, element, strictestOf(*element), place)
                             : putText(item, element, kept);
    }
    case Treatment::Remove:
    case Treatment::Enter:
    case Treatment::EnterStrictly:
        break;
    }
    delete item.remove(element);
    return nullptr;
}

DcmElement *DatasetCleaner::rename(DcmItem &item, DcmElement *element)
{
    const bool isName = tagOf(*element) == (quint32(0x0010) << 16 | 0x0010);
    return putText(item, element, (isName ? m_name : m_id).toLatin1());
}

DcmElement *DatasetCleaner::putDummy(DcmItem &item, DcmElement *element)
{
    DcmElement *fresh = replaced(item, element);
    if (!fresh) {
        return nullptr;
    }
    if (tagOf(*fresh) == encapsulatedDocument
        && ElementText::of(item, DCM_MIMETypeOfEncapsulatedDocument).toLower() == "application/pdf") {
        const QByteArray pdf = DummyValue::emptyPdf();
        fresh->putUint8Array(reinterpret_cast<const Uint8 *>(pdf.constData()), Uint32(pdf.size()));
        if (item.tagExists(DCM_EncapsulatedDocumentLength)) {
            item.putAndInsertUint32(DCM_EncapsulatedDocumentLength, Uint32(pdf.size()));
        }
        return fresh;
    }
    if (DummyValue::set(*fresh)) {
        return fresh;
    }
    delete item.remove(fresh);
    return nullptr;
}

DcmElement *DatasetCleaner::putText(DcmItem &item, DcmElement *element, const QByteArray &text)
{
    DcmElement *fresh = element->isaString() ? element : replaced(item, element);
    if (fresh && fresh->putString(text.constData(), Uint32(text.size())).bad()) {
        delete item.remove(fresh);
        return nullptr;
    }
    return fresh;
}

/// What stays must not say what went.
DcmElement *DatasetCleaner::sweep(DcmItem &item, DcmElement *element)
{
    const DcmEVR vr = element->getVR();
    const bool isOfMaker = element->getGTag() % 2 != 0;
    if (vr == EVR_UI) {
        const QByteArray uids = ElementText::of(*element);
        return m_values.hasUid(uids) ? putText(item, element, newUids(uids)) : element;
    }
    if (isOfMaker && !element->isaString()) {
        Uint8 *bytes = nullptr;
        const bool isShort = element->getLengthField() <= ElementText::longest;
        const bool isSafe = isShort
            && (element->getUint8Array(bytes).bad() || !bytes
                || !m_values.isPersonWithin(QByteArray::fromRawData(
                    reinterpret_cast<const char *>(bytes), int(element->getLengthField()))));
        return isSafe ? element : treat(item, element, Treatment::Remove, {});
    }
    const bool isFree = isText(vr) && !isCode(tagOf(*element));
    const bool isWord = vr == EVR_AE || isText(vr) || (vr == EVR_CS && !isTerm(ElementText::of(*element)));
    const QByteArray text = isWord ? ElementText::of(*element) : QByteArray();
    const bool isTellingText = isFree ? m_values.isWithin(text) : m_values.isPersonWithin(text);
    return isTellingText ? putDummy(item, element) : element;
}

QByteArray DatasetCleaner::newUids(const QByteArray &uids) const
{
    QByteArray renewed;
    for (const QByteArray &uid : uids.split('\\')) {
        const QByteArray plain = uid.trimmed();
        renewed += (plain.isEmpty() || isStandardUid(plain) ? plain : m_pseudonyms.uid(plain)) + '\\';
    }
    renewed.chop(1);
    return renewed;
}

AttributeChange DatasetCleaner::describe(DcmElement &element, const Place &place)
{
    constexpr int mostCharacters = 200;
    AttributeChange change;
    if (!m_isRecording) {
        return change;
    }
    change.place = place.path
        + QStringLiteral("(%1,%2)")
              .arg(element.getGTag(), 4, 16, QLatin1Char('0'))
              .arg(element.getETag(), 4, 16, QLatin1Char('0'));
    change.name = QString::fromLatin1(DcmTag(element.getTag().getXTag()).getTagName())
                      .remove(QLatin1String("RETIRED_"));
    if (DcmSequenceOfItems *sequence = sequenceOf(&element)) {
        change.kind = AttributeChange::Kind::Items;
        change.amount = qint64(sequence->card());
    } else if (element.isaString()) {
        change.before = m_texts.decoded(ElementText::of(element)).left(mostCharacters);
    } else {
        change.kind = AttributeChange::Kind::Bytes;
        change.amount = element.getLengthField();
    }
    return change;
}

void DatasetCleaner::record(AttributeChange change, DcmElement *after)
{
    if (!m_isRecording) {
        return;
    }
    change.isRemoved = !after;
    if (after && after->isaString()) {
        change.after = m_texts.decoded(ElementText::of(*after));
    }
    const bool isSame = after && change.kind == AttributeChange::Kind::Text
        && change.before == change.after.left(change.before.size())
        && !change.before.isEmpty() == !change.after.isEmpty();
    const bool isUntouched =
        after && change.kind != AttributeChange::Kind::Text && !after->isEmpty() && change.amount > 0;
    if (!isSame && !isUntouched && (change.kind == AttributeChange::Kind::Text || change.amount > 0)) {
        m_changes.append(std::move(change));
    }
}
