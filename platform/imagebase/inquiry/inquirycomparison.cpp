#include "inquirycomparison.h"

#include "inquirymoment.h"
#include "textfold.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>

namespace {

/// Behind every digit and sign of a stored day or time: what begins with a text sorts before the text and
/// this.
constexpr QLatin1Char lastCharacter('~');

SqlCondition contains(const QString &expression, const QString &text)
{
    return {QStringLiteral("instr(%1, ?) > 0").arg(expression), {text}};
}

/// Whole numbers stay whole: a double does not hold a large one. Invalid where the text is no number.
QVariant numberOf(const QString &text)
{
    QLocale locale = QLocale::c();
    locale.setNumberOptions(QLocale::RejectGroupSeparator);
    bool good = false;
    const qlonglong whole = locale.toLongLong(text.trimmed(), &good);
    if (good) {
        return whole;
    }
    const double real = locale.toDouble(text.trimmed(), &good);
    return good && std::isfinite(real) ? QVariant(real) : QVariant();
}

/// "20240131" as old devices write it: "2024.01.31".
QString oldDate(const QString &date)
{
    return date.left(4) + QLatin1Char('.') + date.mid(4, 2) + QLatin1Char('.') + date.mid(6);
}

/// A FileTime as a DateTime.
QString fileTimeText(const QString &column)
{
    return QStringLiteral("datetime(nullif(%1, '') / 1000000000, 'unixepoch', 'localtime')").arg(column);
}

QString withoutPunctuation(QString text)
{
    static const QRegularExpression punctuation(QStringLiteral("[-./:]"));
    return text.remove(punctuation);
}

} // namespace

InquiryComparison::InquiryComparison(
    const InquiryCondition &condition, const InquiryFilter::Column &column, const QDateTime &now)
    : m_condition(condition)
    , m_column(QLatin1Char('"') + column.name + QLatin1Char('"'))
    , m_kind(columnKind(column.name, column.isNumber))
    , m_now(now)
{ }

bool InquiryComparison::isFuzzy() const
{
    return m_condition.queryType == QLatin1String(InquiryWord::fuzzy);
}

SqlCondition InquiryComparison::condition(InquiryProblem::Kind *problem) const
{
    if (m_condition.symbol != QLatin1String(InquiryWord::equal)
        && m_condition.symbol != QLatin1String(InquiryWord::greater)
        && m_condition.symbol != QLatin1String(InquiryWord::less)) {
        *problem = InquiryProblem::Kind::UnknownSymbol;
        return {};
    }
    if (!isFuzzy() && m_condition.queryType != QLatin1String(InquiryWord::precise)) {
        *problem = InquiryProblem::Kind::UnknownQueryType;
        return {};
    }
    if (m_condition.value.isEmpty()) {
        return absent();
    }
    switch (m_kind) {
    case ColumnKind::Text:
        return isFuzzy() ? fuzzyText(QStringLiteral("folded"), foldedText(m_condition.value))
                         : compared(m_column, m_condition.value);
    case ColumnKind::PersonName:
        return isFuzzy() ? fuzzyText(QStringLiteral("foldedname"), foldedName(m_condition.value))
                         : compared(m_column, m_condition.value);
    case ColumnKind::Number:
        return number(problem);
    case ColumnKind::Date:
    case ColumnKind::Time:
    case ColumnKind::DateTime:
    case ColumnKind::FileTime:
        break;
    }
    return moment(problem);
}

SqlCondition InquiryComparison::absent() const
{
    return {QStringLiteral("(%1 IS NULL OR %1 = '')").arg(m_column), {}};
}

SqlCondition InquiryComparison::fuzzyText(const QString &function, const QString &value) const
{
    // Of a lone accent or separator nothing is left.
    const QString column = value.isEmpty() ? m_column : QStringLiteral("%1(%2)").arg(function, m_column);
    const QString text = lookedFor(value);
    return m_condition.symbol == QLatin1String(InquiryWord::equal) ? contains(column, text)
                                                                   : compared(column, text);
}

/// Every value contains nothing: where the value has nothing to look for but itself, that.
QString InquiryComparison::lookedFor(const QString &folded) const
{
    return folded.isEmpty() ? m_condition.value : folded;
}

SqlCondition InquiryComparison::number(InquiryProblem::Kind *problem) const
{
    if (isFuzzy() && m_condition.symbol == QLatin1String(InquiryWord::equal)) {
        return contains(m_column, lookedFor(foldedText(m_condition.value).trimmed()));
    }
    const QVariant value = numberOf(m_condition.value);
    if (!value.isValid()) {
        *problem = InquiryProblem::Kind::NotANumber;
        return {};
    }
    SqlCondition condition = compared(m_column, value);
    if (m_condition.symbol == QLatin1String(InquiryWord::greater)) {
        // SQLite sorts every text behind every number.
        return {
            QStringLiteral("(%1 AND typeof(%2) <> 'text')").arg(condition.text, m_column), condition.values};
    }
    return condition;
}

SqlCondition InquiryComparison::moment(InquiryProblem::Kind *problem) const
{
    const QString text = InquiryMoment::storedBeginning(m_condition.value, m_kind, m_now);
    const bool isPart = isFuzzy() && m_condition.symbol == QLatin1String(InquiryWord::equal)
        && !InquiryMoment::isRelative(m_condition.value);
    if (text.isEmpty() && isPart) {
        return partOfMoment();
    }
    if (text.isEmpty()) {
        *problem = InquiryProblem::Kind::NotADate;
        return {};
    }
    switch (m_kind) {
    case ColumnKind::Date:
        return date(text);
    case ColumnKind::FileTime:
        return beginning(fileTimeText(m_column), text);
    default:
        return beginning(m_column, text);
    }
}

/// Among the dates of an index there may be some as old devices write them. Each comparison can use an index.
SqlCondition InquiryComparison::date(const QString &date) const
{
    const QString old = oldDate(date);
    const QString oldYearEnd = date.left(4) + QLatin1Char('/'); // behind every old date of that year
    if (m_condition.symbol == QLatin1String(InquiryWord::equal)) {
        return {QStringLiteral("%1 IN (?, ?)").arg(m_column), {date, old}};
    }
    if (m_condition.symbol == QLatin1String(InquiryWord::greater)) {
        return {QStringLiteral("(%1 > ? OR (%1 > ? AND %1 < ?))").arg(m_column), {date, old, oldYearEnd}};
    }
    return {QStringLiteral("(%1 < ? AND %1 <> '' AND NOT (%1 >= ? AND %1 < ?))").arg(m_column),
        {date, old, oldYearEnd}};
}

SqlCondition InquiryComparison::beginning(const QString &expression, const QString &text) const
{
    if (m_condition.symbol == QLatin1String(InquiryWord::less)) {
        return compared(expression, text);
    }
    const QString end = text + lastCharacter;
    if (m_condition.symbol == QLatin1String(InquiryWord::greater)) {
        return compared(expression, end);
    }
    return {QStringLiteral("(%1 >= ? AND %1 < ?)").arg(expression), {text, end}};
}

/// A value like "2024-01", looked for anywhere.
SqlCondition InquiryComparison::partOfMoment() const
{
    const QString text = lookedFor(foldedText(m_condition.value));
    if (m_kind == ColumnKind::FileTime) {
        return contains(fileTimeText(m_column), text);
    }
    const QString digits = withoutPunctuation(text);
    if (m_kind == ColumnKind::DateTime || digits.isEmpty()) {
        return contains(m_column, text);
    }
    return contains(QStringLiteral("replace(replace(%1, '.', ''), ':', '')").arg(m_column), digits);
}

/// Plainly, by the symbol. What is absent is less than nothing.
SqlCondition InquiryComparison::compared(const QString &expression, const QVariant &value) const
{
    if (m_condition.symbol == QLatin1String(InquiryWord::less)) {
        return {QStringLiteral("(%1 < ? AND %1 <> '')").arg(expression), {value}};
    }
    return {QStringLiteral("%1 %2 ?").arg(expression, m_condition.symbol), {value}};
}
