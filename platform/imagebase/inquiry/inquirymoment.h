#pragma once

#include "columnkind.h"

#include <QDateTime>

/// Days and times as the values of an inquiry name them, absolute ("2024-01-31", "14:30") or relative to a
/// moment
/// ("today-7", "now-2h").
namespace InquiryMoment {

/// Whether the value counts from a moment; "today" does, "todays" does not.
bool isRelative(const QString &value);

/**
 * How every stored value of a kind begins that falls into the day, minute or second that a value names:
 * "20240131" for a Date, "1430" for a Time, "2024-01-31" or "2024-01-31 14:30" for a DateTime (also what a
 * FileTime is compared as).
 * @param now local time
 * @return empty where the value names none for columns of this kind
 */
QString storedBeginning(const QString &value, ColumnKind kind, const QDateTime &now);

} // namespace InquiryMoment
