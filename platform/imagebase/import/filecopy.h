#pragma once

#include "imagebase_export.h"

#include <QByteArray>

#include <atomic>

/// Whether errno says that there is no room, or none for this user.
bool isDiskFull(int systemError);

/// Writes all of it, however many calls that takes. @return errno, 0 for success
int writeAll(int to, const char *bytes, std::size_t size);

/// Copies what one open file holds into another, in the kernel where it can. Any thread.
/// @return errno, 0 for success, ECANCELED where cancelled was set
int copyBytes(int from, int to, const std::atomic<bool> &cancelled);

/// Copies a regular file without a name, where the file system knows that, or under a passing one beside
/// target, and gives it its name then, by which target is replaced in one step: whenever it ends, target is
/// the old file or the whole new one. Any thread.
/// @param source, target in the system's bytes, without a zero byte
/// @return errno, 0 for success
IMAGEBASE_EXPORT int copyIntoPlace(
    const QByteArray &source, const QByteArray &target, const std::atomic<bool> &cancelled);
