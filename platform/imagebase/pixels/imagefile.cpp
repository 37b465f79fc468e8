#include "imagefile.h"

#include "dcmtkcodecs.h"
#include "dicomreader.h"
#include "filewindow.h"
#include "fragments.h"
#include "imageheader.h"
#include "inflate.h"
#include "jpeg2000.h"
#include "pixelframe.h"
#include "sampleconverter.h"
#include "transfersyntax.h"

#include <QFile>

using TransferSyntax::Packing;

namespace {

bool isReadable(const NativeFrame &native)
{
    const int bits = native.bitsAllocated;
    return native.number != NativeFrame::Number::Integer || bits == 1 || bits == 8 || bits == 16
        || bits == 32;
}

} // namespace

struct ImageFile::Private
{
    FileWindow window;
    ImageHeader header;
    Fragments fragments;
    PixelProblem problem = PixelProblem::CannotOpen;

    PixelProblem open(const QByteArray &path);
    PixelProblem check();
    NativeFrame describe() const;
    PixelProblem readNative(int number, NativeFrame &native);
    PixelProblem decode(int number, NativeFrame &native);
};

ImageFile::ImageFile()
    : d(std::make_unique<Private>())
{ }

ImageFile::~ImageFile() = default;

const ImageInfo &ImageFile::info() const
{
    return d->header.info;
}

PixelProblem ImageFile::open(const QString &path)
{
    d->header = {};
    d->problem = d->open(QFile::encodeName(path));
    return d->problem;
}

PixelProblem ImageFile::Private::open(const QByteArray &path)
{
    using Outcome = DicomReadResult::Outcome;
    const DicomReadResult texts = DicomReader().read(path);
    if (texts.outcome == Outcome::CannotOpen || texts.outcome == Outcome::NotDicom) {
        return texts.outcome == Outcome::CannotOpen ? PixelProblem::CannotOpen : PixelProblem::NotDicom;
    }
    if (texts.outcome == Outcome::MediaDirectory) {
        header.info.kind = ObjectKind::Directory;
        return PixelProblem::NoPixels;
    }
    if (!window.open(path)) {
        return PixelProblem::CannotOpen;
    }
    const PixelProblem damage = readImageHeader(window, header);
    header.info.header = texts.header;
    header.info.kind = kindOfClass(texts.header[Attribute::SOPClassUID]);
    return damage == PixelProblem::None ? check() : damage;
}

/// All limits, before anything is allocated for a frame.
PixelProblem ImageFile::Private::check()
{
    ImageInfo &info = header.info;
    const bool isEmpty = header.pixels.kind == PixelPlace::Kind::None || header.pixels.length == 0;
    if (isEmpty && (info.kind != ObjectKind::Image || info.rows == 0 || info.columns == 0)) {
        info.kind = info.kind == ObjectKind::Image ? ObjectKind::Unknown : info.kind;
        return PixelProblem::NoPixels;
    }
    const NativeFrame native = describe();
    if (info.rows <= 0 || info.columns <= 0 || info.samples <= 0 || info.samples > 4 || !isReadable(native)) {
        return PixelProblem::UnsupportedFormat;
    }
    if (native.sampleCount() * qMax(8, native.bitsAllocated) / 8 > maximumFrameBytes) {
        return PixelProblem::TooLarge;
    }
    if (info.frames > maximumFrames) {
        return PixelProblem::TooManyFrames;
    }
    if (isEmpty) {
        return PixelProblem::Truncated;
    }
    info.kind = ObjectKind::Image;
    if (!header.pixels.isEncapsulated) {
        return PixelProblem::None;
    }
    const Packing packing = TransferSyntax::packingOf(info.transferSyntax);
    if (packing == Packing::Unknown || packing == Packing::Native) {
        return packing == Packing::Unknown ? PixelProblem::UnknownSyntax : PixelProblem::BadData;
    }
    return fragments.read(window, header.pixels.offset) ? PixelProblem::None : PixelProblem::Truncated;
}

NativeFrame ImageFile::Private::describe() const
{
    const ImageInfo &info = header.info;
    NativeFrame native;
    native.photometric = info.photometric;
    native.rows = info.rows;
    native.columns = info.columns;
    native.samples = info.samples;
    native.bitsAllocated = info.bitsAllocated;
    native.bitsStored = info.bitsStored;
    native.highBit = info.highBit;
    native.isSigned = info.isSigned;
    native.isPlanar = info.isPlanar;
    native.isBigEndian = header.encoding.isBigEndian;
    if (header.pixels.kind == PixelPlace::Kind::Float) {
        native.number = NativeFrame::Number::Float;
        native.bitsAllocated = 32;
    } else if (header.pixels.kind == PixelPlace::Kind::Double) {
        native.number = NativeFrame::Number::Double;
        native.bitsAllocated = 64;
    }
    return native;
}

PixelProblem ImageFile::Private::readNative(int number, NativeFrame &native)
{
    const PixelPlace &pixels = header.pixels;
    const qint64 present = qMin(pixels.length, window.size() - pixels.offset);
    // Writers call pixels subsampled that they have unpacked.
    native.isSubsampled = native.samples == 3 && native.bitsAllocated == 8
        && native.photometric.endsWith("_422") && present < native.bytesNeeded() * header.info.frames;
    const qint64 firstBit = native.bitsAllocated == 1 ? native.sampleCount() * number : 0;
    native.firstBit = int(firstBit % 8);
    const qint64 needed = native.bytesNeeded();
    const qint64 start = native.bitsAllocated == 1 ? firstBit / 8 : needed * number;
    const uchar *bytes = start + needed <= present ? window.at(pixels.offset + start, needed) : nullptr;
    if (!bytes) {
        return PixelProblem::Truncated;
    }
    native.bytes = QByteArray(reinterpret_cast<const char *>(bytes), int(needed));
    return PixelProblem::None;
}

PixelProblem ImageFile::Private::decode(int number, NativeFrame &native)
{
    if (!header.pixels.isEncapsulated) {
        return readNative(number, native);
    }
    const qint64 mostBytes = 2 * native.bytesNeeded() + 64 * 1024;
    const QByteArray stream = fragments.frame(window, number, header.info.frames, mostBytes);
    if (stream.isEmpty()) {
        return PixelProblem::Truncated;
    }
    switch (TransferSyntax::packingOf(header.info.transferSyntax)) {
    case Packing::Jpeg2000:
        return Jpeg2000::decode(stream, native);
    case Packing::Deflated:
        native.bytes = inflateRaw(
            reinterpret_cast<const uchar *>(stream.constData()), stream.size(), native.bytesNeeded());
        return PixelProblem::None;
    case Packing::Dcmtk:
        return DcmtkCodecs::decode(stream, header.info, native);
    default:
        return PixelProblem::UnknownSyntax;
    }
}

PixelProblem ImageFile::readFrame(int number, PixelFrame &frame)
{
    if (d->problem != PixelProblem::None) {
        return d->problem;
    }
    const ImageInfo &info = d->header.info;
    if (number < 0 || number >= info.frames) {
        return PixelProblem::NoSuchFrame;
    }
    NativeFrame native = d->describe();
    const PixelProblem problem = d->decode(number, native);
    return problem == PixelProblem::None
        ? SampleConverter::convert(native, info, info.valuesOf(number), d->header.palette, frame)
        : problem;
}
