#pragma once

#include "attributes.h"
#include "imagebase_export.h"
#include "inquirycondition.h"
#include "inquiryproblem.h"

#include <QDateTime>
#include <QMap>
#include <QSqlDatabase>
#include <QVariant>

#include <array>

/// A condition in SQL over the columns of one record table, with its values in the order of their marks.
struct SqlCondition
{
    QString text; ///< empty: holds for every row
    QVariantList values; ///< texts, 64-bit integers, doubles
};

/**
 * What the conditions of an inquiry mean, one SQL condition for each record table.
 *
 * Made of plain data, without a database. Conditions of one group are joined by the logic of the row before,
 * "and" binding closer than "or". Values are bound; identifiers come from the known columns alone. The
 * conditions use the function folded() (see textfold.h), which every connection to the index has.
 */
class IMAGEBASE_EXPORT InquiryFilter
{
public:
    /// The columns of a record table by their name, with what their values are.
    struct Column
    {
        QString name;
        bool isNumber = false; ///< the column's own type
    };
    using Columns = std::array<QVector<Column>, 4>; ///< by RecordLevel

    /// The columns of the record tables of an open index.
    static Columns columnsOf(const QSqlDatabase &db);

    /// @param now the moment from which relative values count, local time
    InquiryFilter(const InquiryConditions &conditions, const Columns &columns, const QDateTime &now);

    /// Where there is one the conditions say nothing.
    const InquiryProblem &problem() const { return m_problem; }
    const SqlCondition &of(RecordLevel level) const { return m_conditions[std::size_t(level)]; }

private:
    std::array<SqlCondition, 4> m_conditions;
    InquiryProblem m_problem;
};
