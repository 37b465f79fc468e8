#pragma once

#include "sampleseries.h"

#include <QVector>

/// Pixels of one image as a file holds them: 16 bits each where grey, red, green, blue bytes where coloured.
struct SampleImage
{
    int rows = 0;
    int columns = 0;
    bool coloured = false;
    QVector<quint16> grey; ///< two's complement where the picture has Hounsfield units
    QByteArray colours;
};

/// The number of pixels on each side of every picture.
inline constexpr int sampleSide = 256;

/// Middle of a slice, and of the first pixel of it, in the patient.
Vector3 sliceCentre(const SampleSeries &series, int slice);
Vector3 firstPixel(const SampleSeries &series, int slice);

/// Draws one slice; the same at every run.
SampleImage renderSlice(const SampleSeries &series, int slice);
