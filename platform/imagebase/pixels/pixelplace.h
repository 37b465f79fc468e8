#pragma once

#include <QVector>

class FileWindow;

/// Where the pixels stand in a file.
struct PixelPlace
{
    enum class Kind : quint8 { None, Integer, Float, Double };

    Kind kind = Kind::None;
    qint64 offset = 0; ///< of the value
    qint64 length = 0; ///< as declared; the file may be shorter
    bool isEncapsulated = false;
    bool isWords = false; ///< written as 16 bit numbers, whatever the samples are
};

/// How the elements of a data set are written.
struct ElementEncoding
{
    bool isExplicit = true;
    bool isBigEndian = false;
};

/// Walks over elements until the pixels; those before it are not read.
/// @param taken how many bytes of the file a parser has taken that stopped behind an element's header
PixelPlace findPixels(FileWindow &file, qint64 taken, ElementEncoding encoding);

/// The bytes of a file that hold its pixels, with the headers of their elements.
struct PixelBytes
{
    struct Range
    {
        qint64 offset = 0;
        qint64 length = 0;
        qint64 value = 0; ///< where it begins, behind the header
        quint32 tag = 0;
    };
    QVector<Range> ranges;
    bool isWhole = true; ///< false where the file ends before its pixels do
    bool isEncapsulated = false;
};

/// What a file has of the group of the pixels: they themselves and the tables of their places, each of the
/// kind that it has to be. What else stands between or behind is left out.
/// @param taken as for findPixels()
PixelBytes findPixelBytes(FileWindow &file, qint64 taken, ElementEncoding encoding);
