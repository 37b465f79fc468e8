#pragma once

#include <QByteArray>

#include <atomic>

/// True where both files can be read and hold the same bytes. Any thread; reads until the first difference,
/// or until cancelled is set: the answer means nothing then.
bool sameBytes(const QByteArray &onePath, const QByteArray &otherPath, const std::atomic<bool> &cancelled);
