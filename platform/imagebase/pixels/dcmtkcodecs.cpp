#include "dcmtkcodecs.h"

#include "dcmtklog.h"
#include "imageinfo.h"
#include "transfersyntax.h"

#include <QtEndian>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcpixel.h>
#include <dcmtk/dcmdata/dcpixseq.h>
#include <dcmtk/dcmdata/dcpxitem.h>
#include <dcmtk/dcmdata/dcrledrg.h>
#include <dcmtk/dcmdata/dctk.h>
#include <dcmtk/dcmjpeg/djdecode.h>
#include <dcmtk/dcmjpls/djdecode.h>

namespace {

/// Whether a JPEG or JPEG-LS stream says to be as large as its object: a decoder reserves what the stream
/// says.
bool isOfSize(const QByteArray &stream, const ImageInfo &info)
{
    const auto *bytes = reinterpret_cast<const uchar *>(stream.constData());
    for (int at = 2; at + 9 <= stream.size();) {
        const uchar marker = bytes[at + 1];
        if (bytes[at] != 0xff || marker == 0xff) {
            ++at; // padding
            continue;
        }
        const bool isTable = marker == 0xc4 || marker == 0xc8 || marker == 0xcc;
        if (((marker & 0xf0U) == 0xc0 && !isTable) || marker == 0xf7) {
            const int rows = qFromBigEndian<quint16>(bytes + at + 5);
            return rows == info.rows && qFromBigEndian<quint16>(bytes + at + 7) == info.columns;
        }
        at += 2 + qFromBigEndian<quint16>(bytes + at + 2);
    }
    return false;
}

/// Whether a decoder goes over the picture so often as no encoder asks for: a few bytes a pass could keep it
/// busy for minutes. Data within a pass never look like the beginning of one.
bool hasTooManyPasses(const QByteArray &stream)
{
    constexpr int mostPasses = 64; // a progressive picture has about ten
    return stream.count(QByteArrayLiteral("\xff\xda")) > mostPasses;
}

void describe(const ImageInfo &info, DcmDataset &data)
{
    data.putAndInsertUint16(DCM_Rows, Uint16(info.rows));
    data.putAndInsertUint16(DCM_Columns, Uint16(info.columns));
    data.putAndInsertUint16(DCM_SamplesPerPixel, Uint16(info.samples));
    data.putAndInsertUint16(DCM_BitsAllocated, Uint16(info.bitsAllocated));
    data.putAndInsertUint16(DCM_BitsStored, Uint16(info.bitsStored));
    data.putAndInsertUint16(DCM_HighBit, Uint16(info.highBit));
    data.putAndInsertUint16(DCM_PixelRepresentation, info.isSigned ? 1 : 0);
    data.putAndInsertString(DCM_NumberOfFrames, "1");
    data.putAndInsertString(DCM_PhotometricInterpretation, info.photometric.constData());
    if (info.samples > 1) {
        data.putAndInsertUint16(DCM_PlanarConfiguration, info.isPlanar ? 1 : 0);
    }
}

void insertStream(const QByteArray &stream, E_TransferSyntax syntax, DcmDataset &data)
{
    auto *sequence = new DcmPixelSequence(DcmTag(DCM_PixelData, EVR_OB));
    sequence->insert(new DcmPixelItem(DcmTag(DCM_PixelItemTag)));
    auto *item = new DcmPixelItem(DcmTag(DCM_PixelItemTag));
    item->putUint8Array(
        reinterpret_cast<const Uint8 *>(stream.constData()), static_cast<Uint32>(stream.size()));
    sequence->insert(item);
    auto *pixels = new DcmPixelData(DcmTag(DCM_PixelData, EVR_OB));
    pixels->putOriginalRepresentation(syntax, nullptr, sequence);
    data.insert(pixels, OFTrue);
}

int numberOf(DcmDataset &data, const DcmTagKey &tag)
{
    Uint16 value = 0;
    data.findAndGetUint16(tag, value);
    return value;
}

PixelProblem takeSamples(DcmDataset &data, NativeFrame &native)
{
    OFString photometric;
    data.findAndGetOFString(DCM_PhotometricInterpretation, photometric);
    native.photometric = QByteArray(photometric.c_str());
    native.bitsAllocated = numberOf(data, DCM_BitsAllocated);
    native.bitsStored = numberOf(data, DCM_BitsStored);
    native.highBit = numberOf(data, DCM_HighBit);
    native.isSigned = numberOf(data, DCM_PixelRepresentation) == 1;
    native.isPlanar = numberOf(data, DCM_PlanarConfiguration) == 1;
    native.isSubsampled = native.isBigEndian = false;
    DcmElement *element = nullptr;
    if (data.findAndGetElement(DCM_PixelData, element).bad()) {
        return PixelProblem::BadData;
    }
    const void *samples = nullptr;
    Uint8 *bytes = nullptr;
    Uint16 *words = nullptr;
    if (element->getTag().getEVR() == EVR_OB && element->getUint8Array(bytes).good()) {
        samples = bytes;
    } else if (element->getUint16Array(words).good()) {
        samples = words;
    }
    if (!samples || element->getLength() < native.bytesNeeded()) {
        return PixelProblem::BadData;
    }
    native.bytes = QByteArray(static_cast<const char *>(samples), int(native.bytesNeeded()));
    return PixelProblem::None;
}

} // namespace

void DcmtkCodecs::registerDecoders()
{
    static const bool registered = [] {
        silenceDcmtk();
        DcmRLEDecoderRegistration::registerCodecs();
        DJDecoderRegistration::registerCodecs();
        DJLSDecoderRegistration::registerCodecs();
        return true;
    }();
    Q_UNUSED(registered)
}

PixelProblem DcmtkCodecs::decode(const QByteArray &stream, const ImageInfo &info, NativeFrame &native)
{
    registerDecoders();
    const bool hasMarkers = info.transferSyntax != TransferSyntax::rle;
    if (hasMarkers && (!isOfSize(stream, info) || hasTooManyPasses(stream))) {
        return PixelProblem::BadData;
    }
    const DcmXfer syntax(info.transferSyntax.constData());
    DcmDataset data;
    describe(info, data);
    insertStream(stream, syntax.getXfer(), data);
    if (data.chooseRepresentation(EXS_LittleEndianExplicit, nullptr).bad()) {
        return PixelProblem::BadData;
    }
    return takeSamples(data, native);
}
