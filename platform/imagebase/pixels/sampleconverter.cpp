#include "sampleconverter.h"

#include "palette.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr int greyValues = PixelFrame::greyValues;

template <typename T>
T sampleAt(const NativeFrame &native, qint64 index)
{
    const char *at = native.bytes.constData() + index * qint64(sizeof(T));
    return native.isBigEndian ? qFromBigEndian<T>(at) : qFromLittleEndian<T>(at);
}

/// The stored bits of a sample of up to 16 bits, as a number from 0; the sign of a signed one is turned, so
/// that order is kept and half the range means 0.
class StoredBits
{
public:
    explicit StoredBits(const NativeFrame &native)
        : m_shift(std::max(0, native.highBit + 1 - native.bitsStored))
        , m_mask((1U << native.bitsStored) - 1)
        , m_flip(native.isSigned ? 1U << (native.bitsStored - 1) : 0)
    { }

    quint16 operator()(quint32 raw) const { return quint16(((raw >> m_shift) & m_mask) ^ m_flip); }
    int zero() const { return int(m_flip); }

private:
    const int m_shift;
    const quint32 m_mask;
    const quint32 m_flip;
};

quint32 rawSample(const NativeFrame &native, qint64 index)
{
    switch (native.bitsAllocated) {
    case 1: {
        const qint64 bit = index + native.firstBit;
        return (quint32(uchar(native.bytes.at(int(bit / 8)))) >> (bit % 8)) & 1U;
    }
    case 8:
        return uchar(native.bytes.at(int(index)));
    default:
        return sampleAt<quint16>(native, index);
    }
}

void unpackSmall(const NativeFrame &native, const ImageInfo &info, PixelFrame &frame)
{
    const StoredBits stored(native);
    const int count = frame.grey.size();
    quint16 *out = frame.grey.data();
    if (native.bitsAllocated == 16 && !native.isBigEndian) {
        const auto *in = reinterpret_cast<const uchar *>(native.bytes.constData());
        for (int i = 0; i < count; ++i) {
            out[i] = stored(qFromLittleEndian<quint16>(in + 2 * qint64(i)));
        }
    } else {
        for (int i = 0; i < count; ++i) {
            out[i] = stored(rawSample(native, i));
        }
    }
    frame.intercept -= frame.slope * stored.zero();
    if (info.hasPadding) {
        frame.padding = stored(quint32(info.padding) << std::max(0, native.highBit + 1 - native.bitsStored));
    }
}

double wideSample(const NativeFrame &native, qint64 index)
{
    if (native.number == NativeFrame::Number::Double) {
        const auto bits = sampleAt<quint64>(native, index);
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    const auto bits = sampleAt<quint32>(native, index);
    if (native.number == NativeFrame::Number::Float) {
        float value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return double(value);
    }
    return native.isSigned ? double(qint32(bits)) : double(bits);
}

/// Values of more than 16 bits are spread over as many greys as there are.
void unpackWide(const NativeFrame &native, PixelFrame &frame)
{
    double least = std::numeric_limits<double>::max();
    double most = std::numeric_limits<double>::lowest();
    const int count = frame.grey.size();
    for (int i = 0; i < count; ++i) {
        const double value = wideSample(native, i);
        if (std::isfinite(value)) {
            least = std::min(least, value);
            most = std::max(most, value);
        }
    }
    const double range = most > least ? most - least : 0;
    const double step = std::isfinite(range) && range > 0 ? range / (greyValues - 1) : 1;
    least = range > 0 || most == least ? least : 0;
    for (int i = 0; i < count; ++i) {
        const double value = wideSample(native, i);
        const double grey = std::isfinite(value) ? (value - least) / step : 0;
        frame.grey[i] = quint16(std::clamp(grey, 0.0, double(greyValues - 1)));
    }
    frame.intercept += frame.slope * least;
    frame.slope *= step;
}

void findExtremes(PixelFrame &frame)
{
    int least = greyValues;
    int most = -1;
    for (const quint16 grey : qAsConst(frame.grey)) {
        if (int(grey) != frame.padding) {
            least = std::min(least, int(grey));
            most = std::max(most, int(grey));
        }
    }
    frame.least = quint16(most < 0 ? 0 : least);
    frame.most = quint16(std::max(0, most));
}

PixelProblem convertGrey(
    const NativeFrame &native, const ImageInfo &info, const FrameValues &values, PixelFrame &frame)
{
    frame.slope = values.slope;
    frame.intercept = values.intercept;
    frame.windows = values.windows;
    frame.isInverted = native.photometric == "MONOCHROME1";
    frame.grey.resize(int(native.sampleCount()));
    if (native.number != NativeFrame::Number::Integer || native.bitsAllocated == 32) {
        unpackWide(native, frame);
    } else {
        unpackSmall(native, info, frame);
    }
    findExtremes(frame);
    return PixelProblem::None;
}

PixelProblem convertPalette(const NativeFrame &native, const Palette &palette, PixelFrame &frame)
{
    const int last = palette.red.size() - 1;
    if (last < 0 || native.bitsAllocated > 16) {
        return PixelProblem::UnsupportedFormat;
    }
    const StoredBits stored(native);
    const int count = int(native.sampleCount());
    frame.rgb.resize(count * 3);
    uchar *out = frame.rgb.data();
    for (int i = 0; i < count; ++i) {
        const int index = std::clamp(stored(rawSample(native, i)) - stored.zero() - palette.first, 0, last);
        *out++ = palette.red.at(index);
        *out++ = palette.green.at(index);
        *out++ = palette.blue.at(index);
    }
    return PixelProblem::None;
}

uchar toByte(double value)
{
    return uchar(std::clamp(value + 0.5, 0.0, 255.0));
}

/// Luminance and two colour differences, either over all values or (partial) with head room.
void toRgb(uchar *pixel, bool partial)
{
    const double y = partial ? (pixel[0] - 16) * 255.0 / 219.0 : pixel[0];
    const double scale = partial ? 255.0 / 224.0 : 1.0;
    const double cb = (pixel[1] - 128) * scale;
    const double cr = (pixel[2] - 128) * scale;
    pixel[0] = toByte(y + 1.402 * cr);
    pixel[1] = toByte(y - 0.344136 * cb - 0.714136 * cr);
    pixel[2] = toByte(y + 1.772 * cb);
}

void spreadSubsampled(const NativeFrame &native, uchar *out)
{
    const auto *in = reinterpret_cast<const uchar *>(native.bytes.constData());
    const qint64 pairs = qint64(native.rows) * native.columns / 2;
    for (qint64 i = 0; i < pairs; ++i, in += 4) {
        for (int pixel = 0; pixel < 2; ++pixel) {
            *out++ = in[pixel];
            *out++ = in[2];
            *out++ = in[3];
        }
    }
}

void gatherColours(const NativeFrame &native, uchar *out)
{
    const qint64 pixels = qint64(native.rows) * native.columns;
    const int shift = std::max(0, std::min(native.bitsStored, native.highBit + 1) - 8);
    for (qint64 i = 0; i < pixels; ++i) {
        for (int colour = 0; colour < 3; ++colour) {
            const qint64 index = native.isPlanar ? colour * pixels + i : i * 3 + colour;
            *out++ = uchar(std::min(255U, rawSample(native, index) >> shift));
        }
    }
}

PixelProblem convertColour(const NativeFrame &native, PixelFrame &frame)
{
    const bool known = native.photometric.startsWith("YBR") || native.photometric == "RGB";
    if (!known || (native.bitsAllocated != 8 && native.bitsAllocated != 16)) {
        return PixelProblem::UnsupportedFormat;
    }
    frame.rgb.resize(native.rows * native.columns * 3);
    uchar *out = frame.rgb.data();
    native.isSubsampled ? spreadSubsampled(native, out) : gatherColours(native, out);
    if (native.photometric.startsWith("YBR_FULL") || native.photometric.startsWith("YBR_PARTIAL")) {
        const bool partial = native.photometric.startsWith("YBR_PARTIAL");
        for (qint64 i = 0; i < frame.rgb.size(); i += 3) {
            toRgb(out + i, partial);
        }
    }
    return PixelProblem::None;
}

} // namespace

PixelProblem SampleConverter::convert(const NativeFrame &native, const ImageInfo &info,
    const FrameValues &values, const Palette &palette, PixelFrame &frame)
{
    if (native.bytes.size() < native.bytesNeeded()) {
        return PixelProblem::Truncated;
    }
    const bool isInteger = native.number == NativeFrame::Number::Integer;
    if (isInteger && native.bitsAllocated <= 16
        && (native.bitsStored < 1 || native.bitsStored > native.bitsAllocated
            || native.highBit >= native.bitsAllocated || native.highBit < native.bitsStored - 1)) {
        return PixelProblem::UnsupportedFormat;
    }
    PixelFrame made;
    made.columns = native.columns;
    made.rows = native.rows;
    PixelProblem problem = PixelProblem::UnsupportedFormat;
    if (native.samples == 1) {
        problem = native.photometric.startsWith("PALETTE") && isInteger
            ? convertPalette(native, palette, made)
            : convertGrey(native, info, values, made);
    } else if (native.samples == 3 && isInteger) {
        problem = convertColour(native, made);
    }
    if (problem == PixelProblem::None) {
        frame = made;
    }
    return problem;
}
