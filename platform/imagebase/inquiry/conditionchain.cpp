#include "conditionchain.h"

namespace {

using SqlConditions = QVector<SqlCondition>;

/// Halves in parentheses: SQLite refuses an expression that nests deep, and a plain chain nests as deep as it
/// is long.
SqlCondition joined(const SqlConditions &parts, const char *word, int first, int count)
{
    if (count == 0) {
        return {};
    }
    if (count == 1) {
        return parts.at(first);
    }
    const int half = count / 2;
    const SqlCondition left = joined(parts, word, first, half);
    const SqlCondition right = joined(parts, word, first + half, count - half);
    return {QStringLiteral("(%1 %2 %3)").arg(left.text, QLatin1String(word), right.text),
        left.values + right.values};
}

SqlCondition joined(const SqlConditions &parts, const char *word)
{
    return joined(parts, word, 0, parts.size());
}

} // namespace

void ConditionChain::add(const SqlCondition &condition, Logic before)
{
    if (m_alternatives.isEmpty() || before == Logic::Or) {
        m_alternatives.append(SqlConditions());
    }
    m_alternatives.last().append(condition);
}

SqlCondition ConditionChain::condition() const
{
    SqlConditions alternatives;
    for (const SqlConditions &parts : m_alternatives) {
        alternatives.append(joined(parts, InquiryWord::conjunction));
    }
    return joined(alternatives, InquiryWord::disjunction);
}
