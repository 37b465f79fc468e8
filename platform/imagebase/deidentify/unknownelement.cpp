#include "unknownelement.h"

#include "elementtext.h"

#include <QtEndian>

namespace {

bool fill(DcmElement &fresh, const QByteArray &bytes)
{
    if (ElementText::isString(fresh.getVR())) {
        return fresh.putString(bytes.constData(), Uint32(bytes.size())).good();
    }
    const bool isNumber = fresh.getVR() == EVR_US && bytes.size() == int(sizeof(Uint16));
    return isNumber && fresh.putUint16(qFromLittleEndian<quint16>(bytes.constData())).good();
}

} // namespace

DcmElement *UnknownElement::understood(DcmItem &item, DcmElement *element)
{
    const DcmEVR standard = ElementText::standardVr(element->getTag());
    Uint8 *bytes = nullptr;
    const Uint32 length = element->getLengthField();
    if (!ElementText::isUnknown(element->getVR()) || ElementText::isUnknown(standard)
        || length > ElementText::longest) {
        return element;
    }
    DcmElement *fresh = nullptr;
    if (length > 0 && (element->getUint8Array(bytes).bad() || !bytes)) {
        return element;
    }
    const QByteArray value(reinterpret_cast<const char *>(bytes), bytes ? int(length) : 0);
    if (DcmItem::newDicomElement(fresh, DcmTag(element->getTag().getXTag())).bad() || !fresh
        || !fill(*fresh, value) || item.insert(fresh, OFTrue).bad()) {
        delete fresh;
        return element;
    }
    return fresh;
}
