#pragma once

#include <QByteArray>

/// True where both files can be read and hold the same bytes. Any thread; reads until the first difference.
bool sameBytes(const QByteArray &onePath, const QByteArray &otherPath);
