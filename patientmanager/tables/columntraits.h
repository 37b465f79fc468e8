#pragma once

#include <vector>

class QSqlRecord;

/// What a model of a record table must know of its columns again and again. A value.
class ColumnTraits
{
public:
    ColumnTraits() = default;
    /// @param columns of a table whose first column is its key
    explicit ColumnTraits(const QSqlRecord &columns);

    bool has(int column) const { return column >= 0 && std::size_t(column) < m_traits.size(); }
    /// The table's key, or one of another table; never of what has() denies.
    bool isKey(int column) const { return has(column) && m_traits[std::size_t(column)].isKey; }
    /// Shown at the right, digits below digits.
    bool isNumber(int column) const { return has(column) && m_traits[std::size_t(column)].isNumber; }

private:
    struct Traits
    {
        bool isKey;
        bool isNumber;
    };
    std::vector<Traits> m_traits;
};
