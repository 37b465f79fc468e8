#pragma once

#include <QSharedPointer>
#include <QVariant>
#include <QVector>

/// The values of one row, of those columns of its table that were read. A value: cheap to copy.
class RecordRow
{
public:
    /// Which columns were read: for each column of the table its place among the values, or -1.
    using Places = QSharedPointer<const QVector<int>>;

    RecordRow() = default;
    RecordRow(Places places, QVector<QVariant> values)
        : m_places(std::move(places))
        , m_values(std::move(values))
    { }

    /// Invalid where the column was not read, or is absent in the row. Texts, 64-bit integers, doubles.
    QVariant value(int column) const
    {
        const int place = m_places ? m_places->value(column, -1) : -1;
        return place < 0 ? QVariant() : m_values.at(place);
    }

private:
    Places m_places;
    QVector<QVariant> m_values;
};
