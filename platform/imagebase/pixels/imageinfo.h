#pragma once

#include "dicomheader.h"
#include "objectkind.h"

#include <QByteArray>
#include <QSizeF>
#include <QVector>

/// A window on the modality values: those from centre - width/2 to centre + width/2 spread over all greys.
struct WindowLevel
{
    double centre = 0;
    double width = 0; ///< not positive: none

    bool isValid() const { return width > 0; }
    bool operator==(const WindowLevel &other) const { return centre == other.centre && width == other.width; }
};

/// A window that the file proposes.
struct WindowPreset
{
    WindowLevel window;
    QString name; ///< the file's explanation; often empty

    bool operator==(const WindowPreset &other) const { return window == other.window && name == other.name; }
};

/// How the values that are stored become values of the modality (Hounsfield units, ...), and how these are
/// shown.
struct FrameValues
{
    double slope = 1;
    double intercept = 0;
    QVector<WindowPreset> windows;
};

/// What a file says of its picture, before a pixel is read.
struct ImageInfo
{
    DicomHeader header; ///< the texts that the index keeps
    ObjectKind kind = ObjectKind::Unknown;
    QByteArray transferSyntax;
    QByteArray photometric; ///< upper case
    int rows = 0;
    int columns = 0;
    int frames = 1;
    int samples = 1; ///< of a pixel
    int bitsAllocated = 0;
    int bitsStored = 0;
    int highBit = 0;
    bool isSigned = false;
    bool isPlanar = false; ///< colour by colour instead of pixel by pixel
    bool hasPadding = false;
    int padding = 0; ///< the stored value of pixels that are none
    QSizeF spacing; ///< of columns and rows in mm; empty where unknown
    double frameMs = 0; ///< how long a frame of a cine is shown; 0 where unknown
    FrameValues values;
    QVector<FrameValues> frameValues; ///< of each frame where they differ; else empty

    const FrameValues &valuesOf(int frame) const
    {
        return frame < frameValues.size() ? frameValues.at(frame) : values;
    }
};
