#include "inflate.h"

#include <zlib.h>

QByteArray inflateRaw(const uchar *bytes, qint64 length, qint64 outputLimit)
{
    constexpr int chunk = 64 * 1024;
    z_stream stream = {};
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) {
        return {};
    }
    stream.next_in = const_cast<Bytef *>(bytes); // zlib only reads it
    stream.avail_in = static_cast<uInt>(length);
    QByteArray out;
    int status = Z_OK;
    while (status == Z_OK && out.size() < outputLimit) {
        const int before = out.size();
        out.resize(before + chunk);
        stream.next_out = reinterpret_cast<Bytef *>(out.data() + before);
        stream.avail_out = chunk;
        status = inflate(&stream, Z_NO_FLUSH);
        out.resize(before + chunk - static_cast<int>(stream.avail_out));
    }
    inflateEnd(&stream);
    return out;
}
