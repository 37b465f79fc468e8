#pragma once

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

/// The order of the images of a series, from a table named image: those without a number come last.
inline constexpr char imageOrder[] = "image.InstanceNumber IS NULL, image.InstanceNumber, image.pk";

} // namespace RecordSql
