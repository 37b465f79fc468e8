#pragma once

#include "elementtext.h"

#include <QVector>

/// The parts of data sets, as lists of their own: what they hold may be replaced and removed meanwhile.
namespace DatasetItems {

/// Deeper, nobody knows what it is for: it goes.
inline constexpr int deepest = 60;

inline QVector<DcmElement *> elementsOf(DcmItem &item)
{
    QVector<DcmElement *> elements;
    for (DcmObject *object = item.nextInContainer(nullptr); object; object = item.nextInContainer(object)) {
        elements.append(static_cast<DcmElement *>(object));
    }
    return elements;
}

inline QVector<DcmItem *> itemsOf(DcmSequenceOfItems &sequence)
{
    QVector<DcmItem *> items;
    for (DcmObject *object = sequence.nextInContainer(nullptr); object;
         object = sequence.nextInContainer(object)) {
        items.append(static_cast<DcmItem *>(object));
    }
    return items;
}

/// Null where it is none.
inline DcmSequenceOfItems *sequenceOf(DcmElement *element)
{
    return element->getVR() == EVR_SQ ? dynamic_cast<DcmSequenceOfItems *>(element) : nullptr;
}

/// The attributes that make a code of some terminology.
inline bool isCode(quint32 tag)
{
    return tag >> 16 == 0x0008 && (tag & 0xffff) >= 0x0100 && (tag & 0xffff) <= 0x0122;
}

/// The character set of an item: its own, or that of what it is in.
inline QByteArray characterSetOf(DcmItem &item, const QByteArray &inherited)
{
    return item.tagExists(DCM_SpecificCharacterSet) ? ElementText::of(item, DCM_SpecificCharacterSet)
                                                    : inherited;
}

} // namespace DatasetItems
