#pragma once

#include "nativeframe.h"
#include "pixelproblem.h"

struct ImageInfo;

/// Decodes RLE, JPEG and JPEG-LS by DCMTK.
namespace DcmtkCodecs {

/// Makes DCMTK's own functions decode, once for the process; any thread.
void registerDecoders();

/// @param stream the bytes of one frame
/// @param native gets samples and format; DCMTK may turn the colours to RGB
PixelProblem decode(const QByteArray &stream, const ImageInfo &info, NativeFrame &native);

} // namespace DcmtkCodecs
