#include "headeritem.h"

#include <QByteArray>

#include <cmath>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

int HeaderItem::wholeNumber(DcmItem &item, const DcmTagKey &tag, int otherwise)
{
    Uint16 binary = 0;
    if (item.findAndGetUint16(tag, binary).good()) {
        return binary;
    }
    Sint16 negative = 0;
    if (item.findAndGetSint16(tag, negative).good()) {
        return negative;
    }
    OFString text;
    bool isNumber = false;
    const int value =
        item.findAndGetOFString(tag, text).good() ? QByteArray(text.c_str()).trimmed().toInt(&isNumber) : 0;
    return isNumber ? value : otherwise;
}

bool HeaderItem::decimal(DcmItem &item, const DcmTagKey &tag, unsigned long position, double &value)
{
    OFString text;
    if (item.findAndGetOFString(tag, text, position).bad()) {
        return false;
    }
    bool isNumber = false;
    const double number = QByteArray(text.c_str()).trimmed().toDouble(&isNumber);
    if (isNumber && std::isfinite(number)) {
        value = number;
    }
    return isNumber && std::isfinite(number);
}

DcmItem &HeaderItem::within(DcmItem &item, const DcmTagKey &sequence)
{
    DcmItem *first = nullptr;
    return item.findAndGetSequenceItem(sequence, first, 0).good() && first ? *first : item;
}
