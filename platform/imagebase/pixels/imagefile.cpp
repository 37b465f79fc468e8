#include "imagefile.h"

#include "dcmtkcodecs.h"
#include "decodingshare.h"
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
#include <QtEndian>

using TransferSyntax::Packing;

namespace {

/// As the standard's own 16 bits.
constexpr int maximumSide = 65535;
/// A larger picture would take too much on its way to the screen, where a pixel has four bytes.
constexpr qint64 maximumPixels = qint64(40) * 1000 * 1000;

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
    qint64 decodingBytes(const NativeFrame &native) const;
    bool hasSwappedBytes() const;
};

ImageFile::ImageFile()
    : d(std::make_unique<Private>())
{ }

ImageFile::~ImageFile() = default;

const ImageInfo &ImageFile::info() const
{
    return d->header.info;
}

qint64 ImageFile::heldBytes() const
{
    return d->window.heldBytes() + d->fragments.heldBytes()
        + qint64(d->header.info.frameValues.size()) * qint64(sizeof(FrameValues));
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
    const Packing packing = TransferSyntax::packingOf(info.transferSyntax);
    if (header.pixels.isEncapsulated && packing == Packing::Video) {
        info.kind = ObjectKind::Video;
        return PixelProblem::Video;
    }
    const NativeFrame native = describe();
    if (info.rows <= 0 || info.columns <= 0 || info.samples <= 0 || info.samples > 4 || !isReadable(native)) {
        return PixelProblem::UnsupportedFormat;
    }
    // The sides first: other numbers than 16 bit ones are taken too, and their product could wrap.
    if (info.rows > maximumSide || info.columns > maximumSide
        || native.sampleCount() * qMax(8, native.bitsAllocated) / 8 > maximumFrameBytes
        || qint64(info.rows) * info.columns > maximumPixels || decodingBytes(native) > DecodingShare::whole) {
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
    const qint64 before = hasSwappedBytes() ? start % 2 : 0;
    const qint64 behind = hasSwappedBytes() ? (before + needed) % 2 : 0;
    const uchar *bytes = start + needed + behind <= present
        ? window.at(pixels.offset + start - before, before + needed + behind)
        : nullptr;
    if (!bytes) {
        return PixelProblem::Truncated;
    }
    native.bytes = QByteArray(reinterpret_cast<const char *>(bytes), int(before + needed + behind));
    if (hasSwappedBytes()) {
        qbswap<sizeof(quint16)>(native.bytes.constData(), native.bytes.size() / 2, native.bytes.data());
        native.bytes = native.bytes.mid(int(before), int(needed));
    }
    return PixelProblem::None;
}

/// Words of a big endian file hold the second of two bytes first.
bool ImageFile::Private::hasSwappedBytes() const
{
    return header.encoding.isBigEndian && header.pixels.isWords && header.info.bitsAllocated <= 8;
}

/// As much as decoding a frame takes at a time, roughly, with its stream and what comes out of it.
qint64 ImageFile::Private::decodingBytes(const NativeFrame &native) const
{
    constexpr int timesNative = 4;
    constexpr int timesStream = 6;
    constexpr int bytesAWideSample = 12; // 32 bit numbers within the decoder, and copies of 16 bits
    if (!header.pixels.isEncapsulated) {
        return native.bytesNeeded() * timesNative;
    }
    return TransferSyntax::packingOf(header.info.transferSyntax) == Packing::Jpeg2000
        ? native.sampleCount() * bytesAWideSample
        : native.bytesNeeded() * timesStream;
}

PixelProblem ImageFile::Private::decode(int number, NativeFrame &native)
{
    if (!header.pixels.isEncapsulated) {
        return readNative(number, native);
    }
    // What does not pack well may grow a little.
    const qint64 mostBytes = native.bytesNeeded() + native.bytesNeeded() / 8 + 64 * 1024;
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
    const DecodingShare share(d->decodingBytes(native));
    const PixelProblem problem = d->decode(number, native);
    return problem == PixelProblem::None
        ? SampleConverter::convert(native, info, info.valuesOf(number), d->header.palette, frame)
        : problem;
}
