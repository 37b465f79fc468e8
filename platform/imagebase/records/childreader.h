#pragma once

#include "rowreader.h"

#include <QList>

#include <algorithm>

/// Numbers in their order, records without one behind them, equal ones by key.
inline bool isBeforeByNumber(const QVariant &a, qint64 keyOfA, const QVariant &b, qint64 keyOfB)
{
    if (a.isValid() != b.isValid()) {
        return a.isValid();
    }
    const qlonglong numberOfA = a.toLongLong();
    const qlonglong numberOfB = b.toLongLong();
    return numberOfA != numberOfB ? numberOfA < numberOfB : keyOfA < keyOfB;
}

/// Reads all rows below a parent, each with all its columns, as records of make(key, row) in their order.
/// @return whether they could be read
template <typename Record, typename Make, typename IsBefore>
bool readChildren(
    RecordLevel level, qint64 parent, QList<Record *> *records, const Make &make, const IsBefore &isBefore)
{
    RowReader reader(
        QSqlDatabase::database(), level, RowReader::keyIs(RowReader::parentColumn(level), parent));
    while (reader.next()) {
        records->append(make(reader.key(), reader.row()));
    }
    std::sort(records->begin(), records->end(), isBefore);
    return !reader.error().isValid();
}
