#pragma once

#include <QByteArray>

/// How much of a deflated data set is read, and how much of it unpacked: a header is far smaller, and a few
/// bytes can unpack to gigabytes.
inline constexpr qint64 inflateInputLimit = qint64(4) * 1024 * 1024;
inline constexpr qint64 inflateOutputLimit = qint64(8) * 1024 * 1024;

/// Unpacks a raw deflate stream up to a limit, or a little more, or to where it is broken.
QByteArray inflateRaw(const uchar *bytes, qint64 length, qint64 outputLimit = inflateOutputLimit);
