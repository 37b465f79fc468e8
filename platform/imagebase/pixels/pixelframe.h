#pragma once

#include "imageinfo.h"

#include <QVector>

/**
 * The pixels of one frame, row by row from the top left, without gaps. Either grey: the modality value of a
 * pixel is slope * grey + intercept; or colour: red, green and blue, 8 bits each.
 */
struct PixelFrame
{
    static constexpr int greyValues = 1 << 16;

    int columns = 0;
    int rows = 0;
    QVector<quint16> grey; ///< empty for a colour frame
    QVector<uchar> rgb; ///< empty for a grey frame
    double slope = 1;
    double intercept = 0;
    quint16 least = 0; ///< of all grey pixels but the padding
    quint16 most = 0;
    int padding = -1; ///< grey of pixels that are none; -1 where there are no such
    bool isInverted = false; ///< the least value is white
    QVector<WindowPreset> windows;

    bool isColour() const { return !rgb.isEmpty(); }
    double valueOf(int greyValue) const { return slope * greyValue + intercept; }
    qint64 bytes() const { return qint64(grey.size()) * 2 + rgb.size(); }
};
