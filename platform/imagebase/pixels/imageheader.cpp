#include "imageheader.h"

#include "boundedparse.h"
#include "dcmtklog.h"
#include "decodingshare.h"
#include "dicomuids.h"
#include "elementcursor.h"
#include "headerscanner.h"
#include "inflate.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

namespace {

constexpr quint16 metaGroup = 0x0002;
constexpr qint64 usualHeader = qint64(64) * 1024;
constexpr qint64 deflatedLimit = qint64(64) * 1024 * 1024;
constexpr qint64 inflatedLimit = qint64(96) * 1024 * 1024;
constexpr int mostPaletteEntries = 1 << 16;
constexpr int mostWindows = 16;
constexpr int mostBits = 255;
/// Elements of multi-frame objects that describe each frame, before the pixels.
const DcmTagKey perFrame(0x5200, 0x9230);
const DcmTagKey pixelGroup(0x7fe0, 0x0000);

int wholeNumber(DcmItem &item, const DcmTagKey &tag, int otherwise)
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

/// One of several decimal numbers; false where it is none.
bool decimal(DcmItem &item, const DcmTagKey &tag, unsigned long position, double &value)
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

void readWindows(DcmItem &item, QVector<WindowPreset> &windows)
{
    for (unsigned long i = 0; i < mostWindows; ++i) {
        WindowPreset preset;
        if (!decimal(item, DCM_WindowCenter, i, preset.window.centre)
            || !decimal(item, DCM_WindowWidth, i, preset.window.width)) {
            return;
        }
        OFString name;
        if (item.findAndGetOFString(DCM_WindowCenterWidthExplanation, name, i).good()) {
            preset.name = QString::fromUtf8(name.c_str()).trimmed();
        }
        if (preset.window.isValid()) {
            windows.append(preset);
        }
    }
}

/// The first item of a sequence, or the item itself where the sequence is not there.
DcmItem &within(DcmItem &item, const DcmTagKey &sequence)
{
    DcmItem *first = nullptr;
    return item.findAndGetSequenceItem(sequence, first, 0).good() && first ? *first : item;
}

/// Takes what an item says, directly or in the groups of multi-frame objects; leaves the rest.
void readValues(DcmItem &item, FrameValues &values)
{
    DcmItem &rescale = within(item, DCM_PixelValueTransformationSequence);
    double slope = 0;
    if (decimal(rescale, DCM_RescaleSlope, 0, slope) && slope != 0) {
        values.slope = slope;
    }
    decimal(rescale, DCM_RescaleIntercept, 0, values.intercept);
    QVector<WindowPreset> windows;
    readWindows(within(item, DCM_FrameVOILUTSequence), windows);
    if (!windows.isEmpty()) {
        values.windows = windows;
    }
}

bool readSpacing(DcmItem &item, QSizeF &spacing)
{
    double row = 0;
    double column = 0;
    for (const DcmTagKey &tag : {DCM_PixelSpacing, DCM_ImagerPixelSpacing}) {
        if (decimal(item, tag, 0, row) && decimal(item, tag, 1, column) && row > 0 && column > 0) {
            spacing = QSizeF(column, row);
            return true;
        }
    }
    return false;
}

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
    palette.first = wholeNumber(item, DCM_PixelRepresentation, 0) == 1 ? qint16(first) : int(first);
    palette.red = readColour(item, DCM_RedPaletteColorLookupTableData, count, bits);
    palette.green = readColour(item, DCM_GreenPaletteColorLookupTableData, count, bits);
    palette.blue = readColour(item, DCM_BluePaletteColorLookupTableData, count, bits);
    if (palette.green.size() != palette.red.size() || palette.blue.size() != palette.red.size()) {
        return {};
    }
    return palette;
}

void readFormat(DcmItem &data, ImageInfo &info)
{
    OFString text;
    data.findAndGetOFString(DCM_PhotometricInterpretation, text);
    info.photometric = QByteArray(text.c_str()).trimmed().toUpper();
    info.rows = wholeNumber(data, DCM_Rows, 0);
    info.columns = wholeNumber(data, DCM_Columns, 0);
    info.frames = std::max(1, wholeNumber(data, DCM_NumberOfFrames, 1));
    info.samples = wholeNumber(data, DCM_SamplesPerPixel, 1);
    const auto bits = [&data](const DcmTagKey &tag, int otherwise) {
        return std::clamp(wholeNumber(data, tag, otherwise), -1, mostBits); // beyond, all are refused alike
    };
    info.bitsAllocated = bits(DCM_BitsAllocated, 0);
    info.bitsStored = bits(DCM_BitsStored, info.bitsAllocated);
    info.highBit = bits(DCM_HighBit, info.bitsStored - 1);
    info.isSigned = wholeNumber(data, DCM_PixelRepresentation, 0) == 1;
    info.isPlanar = wholeNumber(data, DCM_PlanarConfiguration, 0) == 1;
    info.hasPadding = data.tagExistsWithValue(DCM_PixelPaddingValue);
    info.padding = wholeNumber(data, DCM_PixelPaddingValue, 0);
}

void readFrames(DcmItem &data, ImageInfo &info)
{
    readSpacing(data, info.spacing);
    double rate = 0;
    if (!decimal(data, DCM_FrameTime, 0, info.frameMs) && decimal(data, DCM_CineRate, 0, rate) && rate > 0) {
        info.frameMs = 1000 / rate;
    }
    readValues(data, info.values);
    DcmItem *shared = nullptr;
    if (data.findAndGetSequenceItem(DCM_SharedFunctionalGroupsSequence, shared, 0).good() && shared) {
        readValues(*shared, info.values);
        readSpacing(within(*shared, DCM_PixelMeasuresSequence), info.spacing);
    }
    DcmSequenceOfItems *frames = nullptr;
    if (data.findAndGetSequence(perFrame, frames).good() && frames) {
        const unsigned long count =
            std::min<unsigned long>(frames->card(), static_cast<unsigned long>(info.frames));
        for (unsigned long i = 0; i < count; ++i) {
            FrameValues values = info.values;
            readValues(*frames->getItem(i), values);
            info.frameValues.append(values);
        }
    }
}

bool take(DcmFileFormat &parsed, FileWindow &file, qint64 taken, ImageHeader &header)
{
    DcmDataset &data = *parsed.getDataset();
    const DcmXfer syntax(data.getOriginalXfer());
    header.encoding = {syntax.isExplicitVR() == OFTrue, syntax.getByteOrder() == EBO_BigEndian};
    readFormat(data, header.info);
    readFrames(data, header.info);
    header.palette = readPalette(data);
    header.pixels = findPixels(file, taken, header.encoding);
    return data.card() > 0;
}

void takeSyntax(DcmFileFormat &parsed, ImageInfo &info)
{
    OFString text;
    if (parsed.getMetaInfo()->findAndGetOFString(DCM_TransferSyntaxUID, text).good() && !text.empty()) {
        info.transferSyntax = QByteArray(text.c_str()).trimmed();
    }
}

/// Reads up to the pixels; where the descriptions of thousands of frames are too much, only up to these.
PixelProblem parse(const MemoryFile &bytes, FileWindow &file, ImageHeader &header)
{
    for (const DcmTagKey &end : {pixelGroup, perFrame}) {
        DcmFileFormat parsed;
        const BoundedParse result = parseBounded(bytes, end, parsed);
        takeSyntax(parsed, header.info);
        header.info.frameValues.clear();
        if (result.complete && take(parsed, file, result.position, header)) {
            return PixelProblem::None;
        }
        if (header.info.transferSyntax == DicomUid::deflated) {
            break;
        }
    }
    return PixelProblem::Damaged;
}

PixelProblem parse(FileWindow &file, ImageHeader &header, qint64 limit)
{
    const QByteArray bytes = boundedPrefix(file, limit);
    const MemoryFile copy(bytes);
    PixelProblem problem = PixelProblem::Damaged;
    onStackFor(bytes, [&] { problem = parse(copy, file, header); });
    return problem;
}

/// Most headers are short: all that is behind them would be copied and looked through for nothing.
PixelProblem parse(FileWindow &file, ImageHeader &header)
{
    const PixelProblem problem = parse(file, header, usualHeader);
    const bool isWhole = file.size() <= usualHeader || header.info.transferSyntax == DicomUid::deflated
        || (problem == PixelProblem::None && header.pixels.kind != PixelPlace::Kind::None);
    if (isWhole) {
        return problem;
    }
    header = {};
    return parse(file, header, parseLimit);
}

/// Puts the unpacked data set into the window.
PixelProblem unpack(FileWindow &file)
{
    ElementCursor cursor(file, HeaderScanner::markOffset + 4, ElementCursor::Encoding::Meta);
    ElementPlace element;
    while (cursor.peek(element) && (element.tag >> 16) == metaGroup && cursor.skip(element)) { }
    const qint64 length = file.size() - cursor.position();
    if (length > deflatedLimit) {
        return PixelProblem::TooLarge;
    }
    const DecodingShare share(length + inflatedLimit);
    const uchar *bytes = file.at(cursor.position(), length);
    const QByteArray unpacked = bytes ? inflateRaw(bytes, length, inflatedLimit) : QByteArray();
    if (unpacked.isEmpty()) {
        return PixelProblem::Damaged;
    }
    file.openBytes(unpacked);
    return PixelProblem::None;
}

} // namespace

PixelProblem readImageHeader(FileWindow &file, ImageHeader &header)
{
    silenceDcmtk();
    const PixelProblem problem = parse(file, header);
    if (problem == PixelProblem::None || header.info.transferSyntax != DicomUid::deflated) {
        return problem;
    }
    const PixelProblem packed = unpack(file);
    if (packed != PixelProblem::None) {
        return packed;
    }
    header = {};
    const PixelProblem unpacked = parse(file, header);
    header.info.transferSyntax = DicomUid::deflated;
    return unpacked;
}
