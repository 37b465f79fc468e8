#include "palettereader.h"

#include "headeritem.h"

#include <QByteArray>
#include <QtEndian>

#include <algorithm>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

namespace {

constexpr int mostPaletteEntries = 1 << 16;

QByteArray bytesOf(DcmItem &item, const DcmTagKey &tag)
{
    DcmElement *element = nullptr;
    if (item.findAndGetElement(tag, element).bad()) {
        return {};
    }
    const Uint32 length = std::min<Uint32>(element->getLength(), mostPaletteEntries * sizeof(Uint16));
    Uint16 *words = nullptr;
    Uint8 *bytes = nullptr;
    if (element->getUint16Array(words).good() && words) {
        return {reinterpret_cast<const char *>(words), int(length)};
    }
    if (element->getUint8Array(bytes).good() && bytes) {
        return {reinterpret_cast<const char *>(bytes), int(length)};
    }
    return {};
}

/// One colour's table as bytes; empty where it does not fit its description.
QVector<uchar> readColour(DcmItem &item, const DcmTagKey &tag, int entries, int bits)
{
    const QByteArray data = bytesOf(item, tag);
    const bool isPacked = bits == 8 && data.size() < 2 * entries;
    QVector<uchar> colour;
    if (data.size() < (isPacked ? entries : 2 * entries)) {
        return colour;
    }
    const auto *bytes = reinterpret_cast<const uchar *>(data.constData());
    quint16 most = 0;
    for (int i = 0; i < entries && !isPacked; ++i) {
        most = std::max(most, qFromLittleEndian<quint16>(bytes + 2 * i));
    }
    for (int i = 0; i < entries; ++i) {
        const int value = isPacked ? bytes[i] : qFromLittleEndian<quint16>(bytes + 2 * i);
        colour.append(uchar(most > 255 ? value >> 8 : value));
    }
    return colour;
}

} // namespace

Palette readPalette(DcmItem &item)
{
    Uint16 entries = 0;
    Uint16 bits = 0;
    Palette palette;
    if (item.findAndGetUint16(DCM_RedPaletteColorLookupTableDescriptor, entries, 0).bad()) {
        return palette;
    }
    Uint16 first = 0;
    item.findAndGetUint16(DCM_RedPaletteColorLookupTableDescriptor, first, 1);
    item.findAndGetUint16(DCM_RedPaletteColorLookupTableDescriptor, bits, 2);
    const int count = entries == 0 ? mostPaletteEntries : entries;
    palette.first =
        HeaderItem::wholeNumber(item, DCM_PixelRepresentation, 0) == 1 ? qint16(first) : int(first);
    palette.red = readColour(item, DCM_RedPaletteColorLookupTableData, count, bits);
    palette.green = readColour(item, DCM_GreenPaletteColorLookupTableData, count, bits);
    palette.blue = readColour(item, DCM_BluePaletteColorLookupTableData, count, bits);
    if (palette.green.size() != palette.red.size() || palette.blue.size() != palette.red.size()) {
        return {};
    }
    return palette;
}
