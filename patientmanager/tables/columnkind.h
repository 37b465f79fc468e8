#pragma once

#include <QSqlField>

/// What the values of a record table's column mean to the people who read and edit them.
enum class ColumnKind {
    Text,
    Number,
    PersonName, ///< a DICOM person name, several parted by a backslash
    Date, ///< yyyyMMdd
    Time, ///< HHmmss with or without a fraction
    FileTime ///< nanoseconds since 1970
};
inline constexpr int columnKindCount = int(ColumnKind::FileTime) + 1;

ColumnKind columnKind(const QSqlField &field);
/// The stored value as people read it; a value that is not what its kind says is shown as it is.
QString columnText(ColumnKind kind, const QVariant &value);
