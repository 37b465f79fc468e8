#pragma once

#include "imagebase_export.h"

#include <QString>

/// A DICOM person name as people read it: "Yamada^Tarou=山田^太郎" becomes "Yamada, Tarou (山田 太郎)";
/// prefix and suffix stand where people put them, and neither '^' nor '=' is left.
IMAGEBASE_EXPORT QString personNameForDisplay(const QString &dicomName);

/// What somebody has typed for a name, who may write it as it is displayed: "Yamada, Tarou" is
/// "Yamada^Tarou". What has a '^' stays as it is.
IMAGEBASE_EXPORT QString personNameFromTyped(const QString &text);

/// A DICOM person name whose groups have no trailing blanks and empty components, and no empty groups at the
/// end.
QString tidyPersonName(const QString &dicomName);
