#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>

/// Makes a file of one byte, and the folders above it; ends the test program where that fails.
inline void writeFile(const QString &path)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("x") != 1) {
        qFatal("%s cannot be written", qPrintable(path));
    }
}
