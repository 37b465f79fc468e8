#include "inquiryfilter.h"

#include "columnkind.h"
#include "conditionchain.h"
#include "inquirycomparison.h"

#include <QSqlField>
#include <QSqlRecord>

#include <algorithm>

namespace {

constexpr std::array<RecordLevel, 4> recordLevels{
    RecordLevel::Patient, RecordLevel::Study, RecordLevel::Series, RecordLevel::Image};

/// Goes through the rows of an inquiry and stops at the first that it does not understand.
class Compiler
{
public:
    Compiler(const InquiryFilter::Columns &columns, const QDateTime &now)
        : m_columns(columns)
        , m_now(now)
    { }

    InquiryProblem read(const InquiryConditions &conditions)
    {
        const std::array<int, 4> last = lastRows(conditions);
        for (int row = 0; row < conditions.size(); ++row) {
            const InquiryCondition &condition = conditions.at(row);
            if (condition.field.isEmpty()) {
                continue;
            }
            const int level = levelOf(condition.group);
            InquiryProblem problem = level < 0
                ? InquiryProblem{InquiryProblem::Kind::UnknownGroup, condition.field, condition.group}
                : read(condition, std::size_t(level), row == last[std::size_t(level)]);
            if (problem) {
                return problem;
            }
        }
        const bool asks = std::any_of(last.begin(), last.end(), [](int row) { return row >= 0; });
        return asks || conditions.isEmpty() ? InquiryProblem()
                                            : InquiryProblem{InquiryProblem::Kind::NoCondition, {}, {}};
    }
    SqlCondition condition(RecordLevel level) const { return m_chains[std::size_t(level)].condition(); }

private:
    static int levelOf(const QString &group)
    {
        const std::optional<RecordLevel> level = recordLevelOf(group);
        return level ? int(*level) : -1;
    }

    /// The logic of the last row of a group joins nothing and may be anything.
    static std::array<int, 4> lastRows(const InquiryConditions &conditions)
    {
        std::array<int, 4> last{-1, -1, -1, -1};
        for (int row = 0; row < conditions.size(); ++row) {
            const int level = levelOf(conditions.at(row).group);
            if (level >= 0 && !conditions.at(row).field.isEmpty()) {
                last[std::size_t(level)] = row;
            }
        }
        return last;
    }

    InquiryProblem read(const InquiryCondition &condition, std::size_t level, bool isLast)
    {
        const auto &columns = m_columns[level];
        const auto column =
            std::find_if(columns.begin(), columns.end(), [&condition](const InquiryFilter::Column &known) {
                return known.name.compare(condition.field, Qt::CaseInsensitive) == 0;
            });
        if (column == columns.end()) {
            return {InquiryProblem::Kind::UnknownField, condition.field, condition.field};
        }
        InquiryProblem::Kind kind = InquiryProblem::Kind::None;
        const SqlCondition sql = InquiryComparison(condition, *column, m_now).condition(&kind);
        if (kind != InquiryProblem::Kind::None) {
            return {kind, condition.field, textOf(kind, condition)};
        }
        m_chains[level].add(sql, m_logic[level]);
        if (!isLast && !readLogic(condition.logic, &m_logic[level])) {
            return {InquiryProblem::Kind::UnknownLogic, condition.field, condition.logic};
        }
        return {};
    }

    static QString textOf(InquiryProblem::Kind kind, const InquiryCondition &condition)
    {
        switch (kind) {
        case InquiryProblem::Kind::UnknownSymbol:
            return condition.symbol;
        case InquiryProblem::Kind::UnknownQueryType:
            return condition.queryType;
        default:
            return condition.value;
        }
    }

    static bool readLogic(const QString &word, ConditionChain::Logic *logic)
    {
        const QString plain = word.trimmed().toLower();
        *logic = plain == QLatin1String(InquiryWord::disjunction) ? ConditionChain::Logic::Or
                                                                  : ConditionChain::Logic::And;
        return *logic == ConditionChain::Logic::Or || plain == QLatin1String(InquiryWord::conjunction);
    }

    const InquiryFilter::Columns &m_columns;
    QDateTime m_now;
    std::array<ConditionChain, 4> m_chains;
    std::array<ConditionChain::Logic, 4> m_logic{};
};

} // namespace

InquiryFilter::Columns InquiryFilter::columnsOf(const QSqlDatabase &db)
{
    Columns columns;
    for (const RecordLevel level : recordLevels) {
        const QSqlRecord record = db.record(QLatin1String(recordTableName(level)));
        for (int i = 0; i < record.count(); ++i) {
            columns[std::size_t(level)].append({record.fieldName(i), holdsNumbers(record.field(i))});
        }
    }
    return columns;
}

InquiryFilter::InquiryFilter(
    const InquiryConditions &conditions, const Columns &columns, const QDateTime &now)
{
    Compiler compiler(columns, now);
    m_problem = compiler.read(conditions);
    if (m_problem) {
        return;
    }
    for (const RecordLevel level : recordLevels) {
        m_conditions[std::size_t(level)] = compiler.condition(level);
    }
}
