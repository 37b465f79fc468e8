#include "treatment.h"

#include "datasetitems.h"
#include "elementtext.h"
#include "profiletable.h"
#include "supplementtable.h"

namespace {

using ElementText::isString;
using ElementText::isText;
using ElementText::isUnknown;

constexpr quint32 patientName = 0x00100010;
constexpr quint32 patientId = 0x00100020;
constexpr quint32 textValue = 0x0040a160; ///< what a report says in words
constexpr quint32 encryptedAttributes = 0x04000500; ///< an earlier anonymiser's copy of what it removed
constexpr quint32 macParameters = 0x4ffe0001; ///< of signatures, which are gone

/// Sequences whose dummy is their own structure: only what stands in it identifies.
bool isContent(quint32 tag)
{
    constexpr quint32 contentSequence = 0x0040a730;
    constexpr quint32 waveformAnnotations = 0x0040b020;
    constexpr quint32 graphicAnnotations = 0x00700001;
    constexpr quint32 performedSteps = 0x00081111;
    return tag == contentSequence || tag == waveformAnnotations || tag == graphicAnnotations
        || tag == performedSteps;
}

/// The profile has these removed, but no object that has them is valid without.
bool isIndispensable(quint32 tag)
{
    constexpr quint32 presentationDate = 0x00700082;
    constexpr quint32 presentationTime = 0x00700083;
    return tag == presentationDate || tag == presentationTime;
}

/// Groups of the network, the file and the directory, lengths of groups, and overlays without their bits.
bool isForeign(quint32 tag)
{
    constexpr quint32 lastOfFile = 0x0005;
    constexpr quint32 overlays = 0x60;
    return tag >> 16 <= lastOfFile || (tag & 0xffff) == 0 || tag >> 24 == overlays
        || tag == encryptedAttributes || tag == macParameters;
}

Treatment ofPrivate(quint32 tag, DcmEVR vr, const DeidentifyOptions &options)
{
    if (options.removePrivate || isUnknown(vr) || vr == EVR_UR) {
        return Treatment::Remove;
    }
    constexpr quint32 lastCreator = 0x00ff;
    if ((tag & 0xffff) <= lastCreator) {
        return Treatment::Keep;
    }
    switch (vr) {
    case EVR_SQ:
        return Treatment::Enter;
    case EVR_UI:
        return Treatment::NewUid;
    case EVR_PN:
        return Treatment::Dummy;
    case EVR_DA:
    case EVR_DT:
        return options.shiftDates ? Treatment::Shift : Treatment::Remove;
    default:
        return isText(vr) ? Treatment::CleanText : Treatment::Keep;
    }
}

Treatment byProfile(const ProfileRule &rule, quint32 tag, DcmEVR vr)
{
    constexpr quint32 acquisitionContext = 0x00400555; // the one that some objects must have, if empty
    if (vr == EVR_SQ) {
        return rule.allows('U') || (rule.allows('D') && isContent(tag)) ? Treatment::Enter
            : rule.allows('D')                                          ? Treatment::EnterStrictly
            : rule.profile == "Z" || tag == acquisitionContext          ? Treatment::Empty
                                                                        : Treatment::Remove;
    }
    return rule.allows('U') || (rule.allows('D') && vr == EVR_UI) ? Treatment::NewUid
        : rule.allows('D') || isIndispensable(tag)                ? Treatment::Dummy
        : rule.allows('Z')                                        ? Treatment::Empty
                                                                  : Treatment::Remove;
}

/// What an option makes of an attribute that the profile would change; Remove where it has nothing to say.
Treatment byOptions(const ProfileRule &rule, DcmEVR vr, const DeidentifyOptions &options)
{
    if (options.shiftDates && rule.dates == 'C' && (vr == EVR_DA || vr == EVR_DT || vr == EVR_TM)) {
        return vr == EVR_TM ? Treatment::Keep : Treatment::Shift;
    }
    if (options.keepCharacteristics && rule.patient == 'K') {
        return Treatment::Keep;
    }
    const bool isCleaned = (options.cleanDescriptors && rule.descriptors == 'C')
        || (options.keepCharacteristics && rule.patient == 'C');
    return isCleaned && isText(vr)  ? Treatment::CleanText
        : isCleaned && vr == EVR_SQ ? Treatment::Enter
                                    : Treatment::Remove;
}

/// Attributes that the profile does not name.
Treatment ofOthers(quint32 tag, DcmEVR vr, const DeidentifyOptions &options, bool isStrict)
{
    if (tag == textValue) {
        return options.cleanDescriptors && !isStrict ? Treatment::CleanText : Treatment::Dummy;
    }
    constexpr quint32 patients = 0x0010;
    if (tag >> 16 == patients) {
        return Treatment::Remove;
    }
    switch (vr) {
    case EVR_SQ:
        return isStrict ? Treatment::EnterStrictly : Treatment::Enter;
    case EVR_UI:
        return Treatment::NewUid;
    case EVR_PN:
        return Treatment::Dummy;
    case EVR_UR:
        return Treatment::Remove;
    case EVR_DA:
    case EVR_DT:
        return options.shiftDates ? Treatment::Shift : Treatment::Dummy;
    case EVR_LT:
    case EVR_ST:
    case EVR_UT:
    case EVR_UC:
        return isStrict                                             ? Treatment::Dummy
            : options.cleanDescriptors || DatasetItems::isCode(tag) ? Treatment::CleanText
                                                                    : Treatment::Dummy;
    default:
        return isStrict && isText(vr) ? Treatment::Dummy : Treatment::Keep;
    }
}

/// Our own rules.
Treatment ofSupplement(SupplementTable::Action action, DcmEVR vr)
{
    return action == SupplementTable::Action::Keep ? (vr == EVR_SQ ? Treatment::Enter : Treatment::Keep)
        : action == SupplementTable::Action::Empty ? Treatment::Empty
                                                   : Treatment::Remove;
}

/// Whether the value cannot be what the standard says that it is: then nobody knows what it holds.
bool isMisplaced(DcmEVR vr, DcmEVR standard)
{
    return isUnknown(vr) || isUnknown(standard) || isString(vr) != isString(standard)
        || (vr == EVR_SQ) != (standard == EVR_SQ);
}

} // namespace

Treatment treatmentOf(DcmElement &element, const DeidentifyOptions &options, bool isStrict)
{
    const quint32 tag = ElementText::tagOf(element);
    const DcmEVR vr = element.getVR();
    if (isForeign(tag)) {
        return Treatment::Remove;
    }
    if ((tag >> 16) % 2 != 0) {
        return ofPrivate(tag, vr, options);
    }
    if (tag == patientName || tag == patientId) {
        return Treatment::Pseudonym;
    }
    const DcmEVR standard = ElementText::standardVr(element.getTag());
    const ProfileRule *rule = ProfileTable::instance().find(tag);
    if (isMisplaced(vr, standard)) {
        return rule && !isUnknown(standard) ? byProfile(*rule, tag, standard) : Treatment::Remove;
    }
    const SupplementTable::Action own = SupplementTable::instance().find(tag);
    if (own != SupplementTable::Action::None && own != SupplementTable::Action::NeverMoved) {
        return ofSupplement(own, vr);
    }
    if (!rule) {
        return ofOthers(tag, vr, options, isStrict);
    }
    DeidentifyOptions asked = options;
    asked.shiftDates = options.shiftDates && own != SupplementTable::Action::NeverMoved;
    const Treatment optional = isStrict ? Treatment::Remove : byOptions(*rule, vr, asked);
    return optional != Treatment::Remove ? optional : byProfile(*rule, tag, vr);
}

Treatment strictestOf(DcmElement &element)
{
    const ProfileRule *rule = ProfileTable::instance().find(ElementText::tagOf(element));
    return rule ? byProfile(*rule, ElementText::tagOf(element), element.getVR()) : Treatment::Dummy;
}
