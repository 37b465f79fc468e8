#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Makes a file, and the folders above it; ends the test program where that fails.
void writeFile(const QString &path, const QByteArray &bytes = "x");

/// What a file holds; nothing where there is none.
QByteArray bytesOf(const QString &path);

/// The whole paths of the files below a folder, hidden ones too, sorted. @param names patterns, or none for
/// all
QStringList filesBelow(const QString &folder, const QStringList &names = {});
