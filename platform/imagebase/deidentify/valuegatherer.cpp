#include "valuegatherer.h"

#include "datasetitems.h"
#include "profiletable.h"
#include "unknownelement.h"

namespace {

using namespace DatasetItems;
using ElementText::isText;
using ElementText::tagOf;

constexpr unsigned long mostElements = 20000;
constexpr quint32 encapsulatedDocument = 0x00420011;
constexpr quint32 contentSequence = 0x0040a730;

/// Whether what a removed attribute says is worth looking for elsewhere: codes, sizes and times are no names.
bool isTelling(DcmEVR vr)
{
    return isText(vr) || vr == EVR_PN || vr == EVR_AE || vr == EVR_DA || vr == EVR_DT;
}

/// Texts in sentences have words of all kinds: they say nothing of a person by themselves.
bool isSentence(DcmEVR vr)
{
    return vr == EVR_LT || vr == EVR_ST || vr == EVR_UT || vr == EVR_UC;
}

} // namespace

ValueGatherer::ValueGatherer(const DeidentifyOptions &options, IdentifyingValues &values, TextCleaner &texts)
    : m_options(options)
    , m_values(values)
    , m_texts(texts)
{ }

bool ValueGatherer::gather(DcmItem &item, const Place &around)
{
    if (item.card() > mostElements) {
        return false;
    }
    Place place = around;
    place.characterSet = characterSetOf(item, around.characterSet);
    for (DcmElement *element : elementsOf(item)) {
        element = UnknownElement::understood(item, element);
        const bool isOfMaker = !element || element->getGTag() % 2 != 0;
        if (isOfMaker || (isCode(tagOf(*element)) && !place.isStrict)) {
            continue;
        }
        const Treatment treatment = treatmentOf(*element, m_options, place.isStrict);
        m_hadDocument = m_hadDocument || tagOf(*element) == encapsulatedDocument;
        m_hadContent = m_hadContent || tagOf(*element) == contentSequence;
        DcmSequenceOfItems *sequence = sequenceOf(element);
        if (!sequence) {
            m_texts.setCharacterSet(place.characterSet);
            gatherValue(*element, treatment);
            continue;
        }
        const Place within{
            place.depth + 1, place.isStrict || treatment == Treatment::EnterStrictly, place.characterSet};
        for (DcmItem *child : place.depth < deepest ? itemsOf(*sequence) : QVector<DcmItem *>()) {
            if (!gather(*child, within)) {
                return false;
            }
        }
    }
    return true;
}

void ValueGatherer::gatherValue(DcmElement &element, Treatment treatment)
{
    const QByteArray bytes = treatment == Treatment::Keep ? QByteArray() : ElementText::of(element);
    const DcmEVR vr = element.getVR();
    if (bytes.isEmpty()) {
        return;
    }
    if (treatment == Treatment::NewUid) {
        for (const QByteArray &uid : bytes.split('\\')) {
            m_values.addUid(uid.trimmed());
        }
    } else if (vr == EVR_DA || vr == EVR_DT) {
        m_values.addDate(bytes);
    } else if (isTelling(vr)) {
        const ProfileRule *rule = ProfileTable::instance().find(tagOf(element));
        const bool isPersonal = rule ? rule->descriptors == 0 : !isSentence(vr);
        m_values.add(bytes, m_texts.decoded(bytes), isPersonal && treatment != Treatment::CleanText);
    }
}
