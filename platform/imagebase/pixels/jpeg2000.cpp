#include "jpeg2000.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <memory>

#include <openjpeg.h>

namespace {

constexpr char boxSignature[] = "\x00\x00\x00\x0c\x6a\x50\x20\x20";
constexpr int mostBits = 16;

using Codec = std::unique_ptr<opj_codec_t, decltype(&opj_destroy_codec)>;
using Stream = std::unique_ptr<opj_stream_t, decltype(&opj_stream_destroy)>;
using Image = std::unique_ptr<opj_image_t, decltype(&opj_image_destroy)>;

/// Bytes in memory as the library reads them.
struct Source
{
    const QByteArray &bytes;
    qint64 position = 0;

    static OPJ_SIZE_T read(void *to, OPJ_SIZE_T length, void *user)
    {
        auto *self = static_cast<Source *>(user);
        const qint64 count = std::min<qint64>(qint64(length), self->bytes.size() - self->position);
        if (count <= 0) {
            return OPJ_SIZE_T(-1);
        }
        std::memcpy(to, self->bytes.constData() + self->position, std::size_t(count));
        self->position += count;
        return OPJ_SIZE_T(count);
    }
    static OPJ_OFF_T skip(OPJ_OFF_T length, void *user)
    {
        auto *self = static_cast<Source *>(user);
        const qint64 count = std::clamp<qint64>(length, -self->position, self->bytes.size() - self->position);
        self->position += count;
        return count;
    }
    static OPJ_BOOL seek(OPJ_OFF_T position, void *user)
    {
        auto *self = static_cast<Source *>(user);
        if (position < 0 || position > self->bytes.size()) {
            return OPJ_FALSE;
        }
        self->position = position;
        return OPJ_TRUE;
    }
};

bool fits(const opj_image_t &image, const NativeFrame &native)
{
    if (image.x1 < image.x0 || image.y1 < image.y0 || int(image.numcomps) < native.samples
        || image.numcomps > 4 || qint64(image.x1) - image.x0 != native.columns
        || qint64(image.y1) - image.y0 != native.rows) {
        return false;
    }
    return std::all_of(image.comps, image.comps + native.samples, [](const opj_image_comp_t &component) {
        return component.prec >= 1 && component.prec <= mostBits && component.dx >= 1 && component.dy >= 1;
    });
}

/// Copies one component into its place among the samples, as 16 bit numbers.
bool copy(const opj_image_comp_t &component, int number, NativeFrame &native)
{
    if (!component.data || component.w == 0 || component.h == 0) {
        return false;
    }
    auto *out = reinterpret_cast<quint16 *>(native.bytes.data()) + number;
    for (int y = 0; y < native.rows; ++y) {
        const auto row = std::min<OPJ_UINT32>(OPJ_UINT32(y) / component.dy, component.h - 1);
        const OPJ_INT32 *line = component.data + std::size_t(row) * component.w;
        for (int x = 0; x < native.columns; ++x, out += native.samples) {
            const auto column = std::min<OPJ_UINT32>(OPJ_UINT32(x) / component.dx, component.w - 1);
            *out = qToLittleEndian(quint16(line[column]));
        }
    }
    return true;
}

bool take(const opj_image_t &image, NativeFrame &native)
{
    const opj_image_comp_t &first = image.comps[0];
    native.bitsAllocated = mostBits;
    native.bitsStored = int(first.prec);
    native.highBit = native.bitsStored - 1;
    native.isSigned = native.isSigned || first.sgnd != 0; // some streams do not say it
    native.isPlanar = native.isSubsampled = native.isBigEndian = false;
    native.bytes.resize(int(native.bytesNeeded()));
    for (int number = 0; number < native.samples; ++number) {
        if (!copy(image.comps[number], number, native)) {
            return false;
        }
    }
    return true;
}

} // namespace

PixelProblem Jpeg2000::decode(const QByteArray &stream, NativeFrame &native)
{
    const bool boxed = stream.startsWith(QByteArray::fromRawData(boxSignature, sizeof boxSignature - 1));
    const Codec codec(opj_create_decompress(boxed ? OPJ_CODEC_JP2 : OPJ_CODEC_J2K), opj_destroy_codec);
    const Stream input(opj_stream_default_create(OPJ_TRUE), opj_stream_destroy);
    Source source{stream};
    opj_stream_set_user_data(input.get(), &source, nullptr);
    opj_stream_set_user_data_length(input.get(), OPJ_UINT64(stream.size()));
    opj_stream_set_read_function(input.get(), Source::read);
    opj_stream_set_skip_function(input.get(), Source::skip);
    opj_stream_set_seek_function(input.get(), Source::seek);
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    // What a file around the stream says of colours would change the components behind our check.
    parameters.flags |= OPJ_DPARAMETERS_IGNORE_PCLR_CMAP_CDEF_FLAG;
    opj_image_t *opened = nullptr;
    if (!opj_setup_decoder(codec.get(), &parameters) || !opj_read_header(input.get(), codec.get(), &opened)) {
        return PixelProblem::BadData;
    }
    const Image image(opened, opj_image_destroy);
    if (!fits(*image, native) || !opj_decode(codec.get(), input.get(), image.get())
        || !fits(*image, native)) {
        return PixelProblem::BadData;
    }
    return take(*image, native) ? PixelProblem::None : PixelProblem::BadData;
}
