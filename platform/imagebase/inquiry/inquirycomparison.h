#pragma once

#include "columnkind.h"
#include "inquirycondition.h"
#include "inquiryfilter.h"

/**
 * Makes SQL of a single condition on a known column. A value: made for one condition, asked while that lives.
 *
 * Stored days and times are compared by how they begin, so that a value to the day or to the minute means all
 * of it.
 */
class InquiryComparison
{
public:
    InquiryComparison(
        const InquiryCondition &condition, const InquiryFilter::Column &column, const QDateTime &now);

    /// @param problem what is wrong with symbol, query type or value; untouched where nothing is
    SqlCondition condition(InquiryProblem::Kind *problem) const;

private:
    bool isFuzzy() const;
    SqlCondition absent() const;
    SqlCondition fuzzyText(const QString &function, const QString &value) const;
    QString lookedFor(const QString &folded) const;
    SqlCondition number(InquiryProblem::Kind *problem) const;
    SqlCondition moment(InquiryProblem::Kind *problem) const;
    SqlCondition date(const QString &date) const;
    SqlCondition beginning(const QString &expression, const QString &text) const;
    SqlCondition partOfMoment() const;
    SqlCondition compared(const QString &expression, const QVariant &value) const;

    const InquiryCondition &m_condition;
    QString m_column; ///< quoted
    ColumnKind m_kind;
    QDateTime m_now;
};
