#include "imageheader.h"

#include "boundedparse.h"
#include "dcmtklog.h"
#include "decodingshare.h"
#include "dicomuids.h"
#include "elementcursor.h"
#include "framedescription.h"
#include "headeritem.h"
#include "headerscanner.h"
#include "inflate.h"
#include "palettereader.h"

#include <algorithm>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

namespace {

constexpr quint16 metaGroup = 0x0002;
constexpr qint64 usualHeader = qint64(64) * 1024;
constexpr qint64 deflatedLimit = qint64(64) * 1024 * 1024;
constexpr qint64 inflatedLimit = qint64(96) * 1024 * 1024;
constexpr int mostBits = 255;
/// Descriptions of each frame stand before the pixels.
const DcmTagKey perFrame(0x5200, 0x9230);
const DcmTagKey pixelGroup(0x7fe0, 0x0000);

void readFormat(DcmItem &data, ImageInfo &info)
{
    OFString text;
    data.findAndGetOFString(DCM_PhotometricInterpretation, text);
    info.photometric = QByteArray(text.c_str()).trimmed().toUpper();
    info.rows = HeaderItem::wholeNumber(data, DCM_Rows, 0);
    info.columns = HeaderItem::wholeNumber(data, DCM_Columns, 0);
    info.frames = std::max(1, HeaderItem::wholeNumber(data, DCM_NumberOfFrames, 1));
    info.samples = HeaderItem::wholeNumber(data, DCM_SamplesPerPixel, 1);
    const auto bits = [&data](const DcmTagKey &tag, int otherwise) {
        return std::clamp(
            HeaderItem::wholeNumber(data, tag, otherwise), -1, mostBits); // beyond, all are refused alike
    };
    info.bitsAllocated = bits(DCM_BitsAllocated, 0);
    info.bitsStored = bits(DCM_BitsStored, info.bitsAllocated);
    info.highBit = bits(DCM_HighBit, info.bitsStored - 1);
    info.isSigned = HeaderItem::wholeNumber(data, DCM_PixelRepresentation, 0) == 1;
    info.isPlanar = HeaderItem::wholeNumber(data, DCM_PlanarConfiguration, 0) == 1;
    info.hasPadding = data.tagExistsWithValue(DCM_PixelPaddingValue);
    info.padding = HeaderItem::wholeNumber(data, DCM_PixelPaddingValue, 0);
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
