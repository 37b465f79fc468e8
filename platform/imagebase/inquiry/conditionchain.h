#pragma once

#include "inquiryfilter.h"

/// Conditions that come row by row with the word that joins each to the one before: "and" binds closer than
/// "or".
class ConditionChain
{
public:
    enum class Logic { And, Or };

    /// @param before joins it to what was added before; of no meaning for the first
    void add(const SqlCondition &condition, Logic before);
    /// All of them as one; without any the empty condition. Nested shallowly, whatever their number.
    SqlCondition condition() const;

private:
    QVector<QVector<SqlCondition>> m_alternatives; ///< those of one entry are joined by "and"
};
