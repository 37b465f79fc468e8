#pragma once

#include "imagebase_export.h"

#include <QSqlField>

/// What the values of a record table's column mean to the people who read, edit and look for them.
enum class ColumnKind {
    Text,
    Number,
    PersonName, ///< a DICOM person name, several parted by a backslash
    Date, ///< yyyyMMdd
    Time, ///< HHmmss with or without a fraction
    DateTime, ///< yyyy-MM-dd HH:mm:ss, local time
    FileTime ///< nanoseconds since 1970
};
inline constexpr int columnKindCount = int(ColumnKind::FileTime) + 1;

/// @param isNumber whether the column's own type is a number
IMAGEBASE_EXPORT ColumnKind columnKind(const QString &column, bool isNumber);
IMAGEBASE_EXPORT ColumnKind columnKind(const QSqlField &column);
/// Whether a column's own type is a number.
IMAGEBASE_EXPORT bool holdsNumbers(const QSqlField &column);
