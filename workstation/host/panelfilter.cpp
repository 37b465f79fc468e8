#include "panelfilter.h"

#include "textfold.h"

#include <QDate>
#include <QRegularExpression>
#include <QStringList>

namespace {

template <int size>
constexpr QLatin1String part(const char (&text)[size])
{
    return QLatin1String(text, size - 1);
}

/// Where a part of the emitted text begins; each value ends with a quote.
constexpr QLatin1String conjunction = part("&&");
constexpr QLatin1String nameStart = part("PatientName = '");
constexpr QLatin1String patientIdStart = part("PatientID = '");
constexpr QLatin1String quote = part("'");

/// The values as they were typed.
struct Values
{
    QString name;
    QString patientId;
    QString firstDay;
    QString lastDay;
};

QString literal(QString value)
{
    return quote + value.replace(quote, QLatin1String("''")) + quote;
}

/// Takes both days from the end of the text, with the "&&" before them.
bool takeDays(QString *text, Values *values)
{
    static const QRegularExpression days(
        QStringLiteral("(?:^|&&)updated_time >= '([^']*)'&&updated_time <= '([^']*)'$"));
    const QRegularExpressionMatch match = days.match(*text);
    if (!match.hasMatch()) {
        return false;
    }
    values->firstDay = match.captured(1);
    values->lastDay = match.captured(2);
    text->truncate(match.capturedStart());
    return true;
}

/// The value of a text that is one part; nothing where it is not.
std::optional<QString> valueOf(const QString &text, QLatin1String start)
{
    if (!text.startsWith(start) || !text.endsWith(quote) || text.size() <= start.size()) {
        return {};
    }
    return text.mid(start.size(), text.size() - start.size() - quote.size());
}

bool takeTexts(const QString &text, const PanelRows &rows, Values *values)
{
    std::optional<QString> name = QString();
    std::optional<QString> patientId = QString();
    if (rows.name && rows.patientId) {
        const int seam = text.lastIndexOf(quote + conjunction + patientIdStart);
        name = valueOf(text.left(seam + quote.size()), nameStart);
        patientId = valueOf(text.mid(seam + quote.size() + conjunction.size()), patientIdStart);
    } else if (rows.name) {
        name = valueOf(text, nameStart);
    } else if (rows.patientId) {
        patientId = valueOf(text, patientIdStart);
    } else if (!text.isEmpty()) {
        return false;
    }
    values->name = name.value_or(QString());
    values->patientId = patientId.value_or(QString());
    return name && patientId;
}

/// By instr(), to which no letter is a wildcard.
QStringList nameConditions(const QString &name)
{
    QStringList conditions;
    for (const QString &word : foldedName(name).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QString stored = isUnparted(word) ? QStringLiteral("joinedname(PatientName)")
                                                : QStringLiteral("foldedname(PatientName)");
        conditions.append(
            QStringLiteral("instr(") + stored + QLatin1String(", ") + literal(word) + QLatin1String(") > 0"));
    }
    return conditions;
}

QString lastDayCondition(const QString &day)
{
    const QDate next = QDate::fromString(day, Qt::ISODate).addDays(1);
    return next.isValid() ? QLatin1String("updated_time < ") + literal(next.toString(Qt::ISODate))
                          : QLatin1String("updated_time <= ") + literal(day);
}

} // namespace

std::optional<QString> PanelFilter::condition(const QString &emitted, const PanelRows &rows)
{
    QString text = emitted;
    Values values;
    if (!takeDays(&text, &values) || !takeTexts(text, rows, &values)) {
        return {};
    }
    QStringList conditions = nameConditions(values.name);
    const QString patientId = values.patientId.trimmed();
    if (!patientId.isEmpty()) {
        conditions.append(QLatin1String("PatientID = ") + literal(patientId));
    }
    if (rows.firstDay) {
        conditions.append(QLatin1String("updated_time >= ") + literal(values.firstDay));
    }
    if (rows.lastDay) {
        conditions.append(lastDayCondition(values.lastDay));
    }
    return conditions.join(QLatin1String(" and "));
}
