#include "elementtext.h"

QByteArray ElementText::of(DcmElement &element)
{
    char *text = nullptr;
    Uint32 size = 0;
    if (element.getLengthField() > longest || !element.isaString() || element.getString(text, size).bad()
        || !text) {
        return {};
    }
    QByteArray bytes(text, int(size));
    while (bytes.endsWith(' ') || bytes.endsWith('\0')) {
        bytes.chop(1);
    }
    return bytes;
}

QByteArray ElementText::of(DcmItem &item, const DcmTagKey &tag)
{
    DcmElement *element = nullptr;
    return item.findAndGetElement(tag, element).good() ? of(*element) : QByteArray();
}

DcmEVR ElementText::standardVr(const DcmTagKey &tag)
{
    return DcmTag(tag).getEVR();
}

bool ElementText::isText(DcmEVR vr)
{
    return vr == EVR_LO || vr == EVR_SH || vr == EVR_LT || vr == EVR_ST || vr == EVR_UT || vr == EVR_UC;
}

bool ElementText::isString(DcmEVR vr)
{
    return isText(vr) || vr == EVR_AE || vr == EVR_AS || vr == EVR_CS || vr == EVR_DA || vr == EVR_DS
        || vr == EVR_DT || vr == EVR_IS || vr == EVR_PN || vr == EVR_TM || vr == EVR_UI || vr == EVR_UR;
}

bool ElementText::isUnknown(DcmEVR vr)
{
    return vr == EVR_UN || vr == EVR_UNKNOWN || vr == EVR_UNKNOWN2B;
}
