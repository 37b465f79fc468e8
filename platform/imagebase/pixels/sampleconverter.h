#pragma once

#include "nativeframe.h"
#include "pixelframe.h"
#include "pixelproblem.h"

struct Palette;

/// Turns samples into a picture: bits and signs, byte order, planes, palettes and colour spaces.
namespace SampleConverter {

/// @param info gives the padding; the format is the frame's own, which a decoder may have changed
/// @param values slope, intercept and windows for this frame
PixelProblem convert(const NativeFrame &native, const ImageInfo &info, const FrameValues &values,
    const Palette &palette, PixelFrame &frame);

} // namespace SampleConverter
