#include "unknownelement.h"

#include "elementtext.h"

#include <QtEndian>

#include <dcmtk/dcmdata/dcistrmb.h>

namespace {

/// Each level of items is a level of the parser's own recursion.
constexpr int mostItems = 500;

void append(QByteArray &to, quint16 number)
{
    number = qToLittleEndian(number);
    to.append(reinterpret_cast<const char *>(&number), sizeof number);
}

/// Such a value is written as if the file had no VRs: so it is parsed. @return null where it cannot be
DcmElement *parsed(const DcmTagKey &key, const QByteArray &value)
{
    if (value.count(QByteArray::fromRawData("\xfe\xff\x00\xe0", 4)) > mostItems) {
        return nullptr;
    }
    QByteArray bytes;
    append(bytes, key.getGroup());
    append(bytes, key.getElement());
    append(bytes, quint16(value.size() & 0xffff));
    append(bytes, quint16(value.size() >> 16));
    bytes += value;
    DcmInputBufferStream stream;
    stream.setBuffer(bytes.data(), bytes.size());
    stream.setEos();
    DcmDataset around;
    around.transferInit();
    const bool isRead =
        around.read(stream, EXS_LittleEndianImplicit, EGL_noChange, ElementText::longest).good();
    around.transferEnd();
    return isRead ? around.remove(key) : nullptr;
}

} // namespace

DcmElement *UnknownElement::understood(DcmItem &item, DcmElement *element)
{
    const DcmEVR standard = ElementText::standardVr(element->getTag());
    const Uint32 length = element->getLengthField();
    if (!ElementText::isUnknown(element->getVR()) || ElementText::isUnknown(standard)
        || length > ElementText::longest) {
        return element;
    }
    Uint8 *bytes = nullptr;
    if (length > 0 && (element->getUint8Array(bytes).bad() || !bytes)) {
        return element;
    }
    DcmElement *fresh = parsed(element->getTag().getXTag(),
        QByteArray(reinterpret_cast<const char *>(bytes), bytes ? int(length) : 0));
    if (!fresh || item.insert(fresh, OFTrue).bad()) {
        delete fresh;
        return element;
    }
    return fresh;
}
