#pragma once

#include <QByteArray>

/// Uncompressed samples of one frame as they stand in a file or come out of a decoder.
struct NativeFrame
{
    enum class Number : quint8 { Integer, Float, Double };

    QByteArray bytes; ///< at least as many as the description needs
    QByteArray photometric;
    int rows = 0;
    int columns = 0;
    int samples = 1;
    int bitsAllocated = 8; ///< of a sample: 1, 8, 16, 32 or 64
    int bitsStored = 8;
    int highBit = 7;
    int firstBit = 0; ///< where a frame of single bits begins in its first byte
    bool isSigned = false;
    bool isPlanar = false;
    bool isBigEndian = false;
    bool isSubsampled = false; ///< two pixels share their colour: Y Y Cb Cr
    Number number = Number::Integer;

    qint64 sampleCount() const { return qint64(rows) * columns * samples; }
    /// How many bytes that takes, with firstBit.
    qint64 bytesNeeded() const
    {
        if (isSubsampled) {
            return qint64(rows) * columns * 2;
        }
        return (sampleCount() * bitsAllocated + firstBit + 7) / 8;
    }
};
