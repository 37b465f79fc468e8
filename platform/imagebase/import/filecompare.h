#pragma once

#include "imagebase_export.h"

#include <QByteArray>

#include <atomic>

/// True where both files can be read and hold the same bytes. Any thread; reads until the first difference,
/// or until cancelled is set: the answer means nothing then.
IMAGEBASE_EXPORT bool sameBytes(
    const QByteArray &onePath, const QByteArray &otherPath, const std::atomic<bool> &cancelled);

/// The same of what follows the meta information, where both files have one and agree in it on class and
/// transfer syntax: programs that pass an object on write their own.
bool sameDataSets(const QByteArray &onePath, const QByteArray &otherPath, const std::atomic<bool> &cancelled);
