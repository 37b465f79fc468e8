#pragma once

#include <QtGlobal>

/// Why there is no picture of a frame.
enum class PixelProblem : quint8 {
    None,
    CannotOpen, ///< the system refuses the file, or it is not there
    NotDicom,
    Damaged, ///< the data set before the pixels cannot be read
    NoPixels, ///< an object that has no picture; its kind says what it is
    TooLarge, ///< larger than a limit of this reader; nothing was allocated
    TooManyFrames, ///< more frames than any object has
    Truncated, ///< the file has fewer bytes than the frame needs
    NoSuchFrame,
    UnknownSyntax, ///< a transfer syntax that is not read here
    Video, ///< an object whose frames are one stream of MPEG or HEVC
    UnsupportedFormat, ///< a combination of samples, bits and colours that is not read here
    BadData ///< the compressed data cannot be decoded, or does not fit the description
};
