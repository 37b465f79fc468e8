#pragma once

#include "nativeframe.h"
#include "pixelproblem.h"

/// Decodes JPEG 2000 code streams, high throughput ones too.
namespace Jpeg2000 {

/// @param stream a code stream, or a JP2 file around one
/// @param native says how large the picture must be; gets the samples and their format
PixelProblem decode(const QByteArray &stream, NativeFrame &native);

} // namespace Jpeg2000
