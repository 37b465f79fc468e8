#include "datasetcleaner.h"

#include "datasetitems.h"
#include "dummyvalue.h"

namespace {

using namespace DatasetItems;
using ElementText::tagOf;

constexpr quint32 encapsulatedDocument = 0x00420011;

bool isEntered(Treatment treatment)
{
    return treatment == Treatment::Enter || treatment == Treatment::EnterStrictly;
}

QString named(const QString &pattern, const QString &code)
{
    return QString(pattern).replace(DeidentifyOptions::codeMark(), code);
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

DatasetCleaner::DatasetCleaner(
    const DeidentifyOptions &options, const Pseudonyms &pseudonyms, const QByteArray &identity)
    : m_options(options)
    , m_texts(m_values)
    , m_kept(m_values, m_texts, pseudonyms)
    , m_gatherer(options, m_values, m_texts)
    , m_recorder(m_texts)
    , m_name(named(options.namePattern, pseudonyms.code(identity)))
    , m_id(named(options.idPattern, pseudonyms.code(identity)))
    , m_daysBack(pseudonyms.daysBack(identity))
{ }

bool DatasetCleaner::clean(DcmItem &dataset)
{
    if (!m_gatherer.gather(dataset)) {
        return false;
    }
    cleanItem(dataset, {});
    return true;
}

void DatasetCleaner::cleanItem(DcmItem &item, const Place &around)
{
    Place place = around;
    place.characterSet = characterSetOf(item, around.characterSet);
    m_texts.setCharacterSet(place.characterSet);
    for (DcmElement *element : elementsOf(item)) {
        const Treatment treatment = treatmentOf(*element, m_options, place.isStrict);
        const AttributeChange before = m_recorder.before(*element, place.path);
        if (isEntered(treatment) && sequenceOf(element) && place.depth < deepest) {
            enter(*sequenceOf(element),
                {place.depth + 1, treatment == Treatment::EnterStrictly, place.characterSet, before.place});
            m_texts.setCharacterSet(place.characterSet);
            continue;
        }
        m_recorder.add(before, treat(item, element, isEntered(treatment) ? Treatment::Remove : treatment));
    }
}

void DatasetCleaner::enter(DcmSequenceOfItems &sequence, const Place &place)
{
    int number = 0;
    for (DcmItem *item : itemsOf(sequence)) {
        Place within = place;
        within.path = m_recorder.within(place.path, ++number);
        cleanItem(*item, within);
    }
}

/// @return what stands there now; null where it is gone
DcmElement *DatasetCleaner::treat(DcmItem &item, DcmElement *element, Treatment treatment)
{
    switch (treatment) {
    case Treatment::Keep:
        return keep(item, element);
    case Treatment::Empty:
        return element->isEmpty() ? element : replaced(item, element);
    case Treatment::Dummy:
        return element->isEmpty() ? element : putDummy(item, element);
    case Treatment::NewUid: {
        const QByteArray uids = ElementText::of(*element);
        return uids.isEmpty() ? replaced(item, element) : putText(item, element, m_kept.newUids(uids));
    }
    case Treatment::Pseudonym:
        return rename(item, element);
    case Treatment::Shift:
    case Treatment::CleanText:
        return treatText(item, element, treatment);
    case Treatment::Remove:
    case Treatment::Enter:
    case Treatment::EnterStrictly:
        break;
    }
    delete item.remove(element);
    return nullptr;
}

/// What is left of a text; without anything left, as if no option had kept it.
DcmElement *DatasetCleaner::treatText(DcmItem &item, DcmElement *element, Treatment treatment)
{
    const QByteArray text = ElementText::of(*element);
    if (text.isEmpty() && element->getLengthField() <= ElementText::longest) {
        return element;
    }
    const QByteArray left = treatment == Treatment::Shift
        ? DummyValue::shifted(element->getVR(), text, m_daysBack)
        : m_texts.cleaned(text);
    return left.isEmpty() ? treat(item, element, strictestOf(*element))
        : left == text    ? element
                          : putText(item, element, left);
}

DcmElement *DatasetCleaner::keep(DcmItem &item, DcmElement *element)
{
    const std::optional<QByteArray> mended = m_kept.mended(item, *element);
    if (!mended) {
        return element;
    }
    const bool isDummy = mended->isEmpty() && element->isaString();
    return isDummy          ? putDummy(item, element)
        : mended->isEmpty() ? treat(item, element, Treatment::Remove)
                            : putText(item, element, *mended);
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
