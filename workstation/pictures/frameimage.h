#pragma once

#include "pixelframe.h"

#include <QImage>

/// Pictures of frames for the screen.
namespace FrameImage {

/// The window that spreads the values that matter over all greys: without the padding and without a few
/// extreme pixels. Not valid for a colour frame.
WindowLevel autoWindow(const PixelFrame &frame);
/// The file's first window, else the automatic one.
WindowLevel defaultWindow(const PixelFrame &frame);
/// The same with fewer pixels, some of the frame's own: as many as a size has, where it has more in both
/// directions.
PixelFrame reduced(const PixelFrame &frame, const QSize &size);
/// A picture as large as the frame, in the 32 bit format that painters scale fastest.
/// @param invert black for white, on top of what the frame asks for
QImage render(const PixelFrame &frame, const WindowLevel &window, bool invert = false);

} // namespace FrameImage
