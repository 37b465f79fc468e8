#pragma once

#include "filewindow.h"
#include "pixelplace.h"

/// What compressed pictures say beside their pixels.
struct CodestreamTexts
{
    QVector<PixelBytes::Range> ranges; ///< comments and the like, which nothing needs
    bool isUnderstood = true; ///< false where there may be more
};

/// Walks over the markers of JPEG, JPEG-LS and JPEG 2000.
/// @param fragments values of the fragments that follow each other, without the table of offsets
CodestreamTexts findCodestreamTexts(FileWindow &file, const QVector<PixelBytes::Range> &fragments);
