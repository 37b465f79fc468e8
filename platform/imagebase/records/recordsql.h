#pragma once

#include "attributes.h"

#include <QString>

/// Pieces of statements on records, for all who read these.
namespace RecordSql {

/// Any number of keys as the one bound value of a json_each().
template <typename Keys>
QString keyList(const Keys &keys)
{
    QString list;
    list.reserve(int(keys.size()) * 8 + 2);
    list += QLatin1Char('[');
    for (const auto key : keys) {
        list += QString::number(key) + QLatin1Char(',');
    }
    if (!keys.empty()) {
        list.chop(1);
    }
    return list + QLatin1Char(']');
}

/// The keys of all records of a level that belong to those of a level above, or are these, as an SQL list;
/// the keys of these are bound as :keys.
inline QString keysBelow(RecordLevel level, RecordLevel lower)
{
    QString keys = QStringLiteral("SELECT value FROM json_each(:keys)");
    for (int next = int(level) + 1; next <= int(lower); ++next) {
        keys = QStringLiteral("SELECT pk FROM %1 WHERE %2 IN (%3)")
                   .arg(QLatin1String(recordTableName(RecordLevel(next))),
                       QLatin1String(recordParentColumn(RecordLevel(next))), keys);
    }
    return keys;
}

/// The order of the images of a series, from a table named image: those without a number come last.
inline constexpr char imageOrder[] = "image.InstanceNumber IS NULL, image.InstanceNumber, image.pk";

} // namespace RecordSql
