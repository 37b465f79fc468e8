#pragma once

#include "imagebase_export.h"

#include <QSqlDatabase>
#include <QString>

#include <vector>

/**
 * A set of keys that conditions of SQL can ask for, however large it is: a list of 100,000 keys would take
 * longer to parse than its rows to read.
 *
 * The set lives as long as this object; where it is gone its condition is true for no row. A statement that
 * runs keeps the keys that were there at its start. Any thread.
 */
class IMAGEBASE_EXPORT FoundKeys
{
public:
    FoundKeys();
    ~FoundKeys();
    FoundKeys(const FoundKeys &) = delete;
    FoundKeys &operator=(const FoundKeys &) = delete;

    /// @param keys in rising order
    void set(std::vector<qint64> keys);
    /// "found(pk, 7)": a condition on the key column, the same for all sets of this object.
    QString condition() const;

private:
    const int m_number;
};

/// Makes found(key, number) an SQL function of a connection. For a null connection does nothing.
void registerFoundKeys(const QSqlDatabase &db);
