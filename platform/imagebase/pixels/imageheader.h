#pragma once

#include "imageinfo.h"
#include "palette.h"
#include "pixelplace.h"
#include "pixelproblem.h"

class FileWindow;

/// All that stands before the pixels and is needed to read them.
struct ImageHeader
{
    ImageInfo info; ///< without the header's texts and the kind
    Palette palette;
    PixelPlace pixels;
    ElementEncoding encoding;
};

/**
 * Reads what describes the pixels, by DCMTK within its bounds: what is malformed counts as not there. A
 * deflated data set is unpacked, to a limit, and takes the place of the file's bytes in the window.
 * @return Damaged or TooLarge, or None; whether there are pixels is for the caller to see
 */
PixelProblem readImageHeader(FileWindow &file, ImageHeader &header);
