#pragma once

#include "imagebase_export.h"

#include <QString>

/// A text as the name of a file or a folder that every system takes: letters of all scripts stay; what
/// separates, controls or hides text becomes "_" or goes; names that some system keeps for itself get a "_".
/// Never empty, never longer than most characters, and within the bytes that file systems allow.
/// @param otherwise what it is called where nothing is left of it
IMAGEBASE_EXPORT QString safeName(const QString &text, const QString &otherwise, int most);
