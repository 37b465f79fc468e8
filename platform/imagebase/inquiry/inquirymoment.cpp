#include "inquirymoment.h"

#include <QRegularExpression>

namespace {

constexpr qint64 secondsPerMinute = 60;
constexpr qint64 secondsPerHour = 60 * secondsPerMinute;
constexpr int daysPerWeek = 7;
constexpr int lastYear = 9999; // four digits are all that is stored

/// What a value says, before it is known what for. Parts that it does not say are invalid or empty.
struct Moment
{
    QDate date;
    QString time; ///< HHmm, HHmmss, or HHmmss with a fraction
    bool isRelativeTime = false; ///< date and time are those of one moment: either alone is an answer
};

QRegularExpression wholeText(const QString &pattern)
{
    return QRegularExpression(
        QRegularExpression::anchoredPattern(pattern), QRegularExpression::CaseInsensitiveOption);
}

QRegularExpressionMatch relativeMatch(const QString &value)
{
    static const QRegularExpression pattern =
        wholeText(QStringLiteral("\\s*(today|now)\\s*(?:([+-])\\s*(\\d{1,9})\\s*([a-z]?))?\\s*"));
    return pattern.match(value);
}

/// Days and weeks keep the time of day over a change of the clocks. Invalid for a unit that is none.
QDateTime shifted(const QDateTime &from, qint64 count, const QString &unit)
{
    if (unit == QLatin1String("d")) {
        return from.addDays(count);
    }
    if (unit == QLatin1String("w")) {
        return from.addDays(count * daysPerWeek);
    }
    if (unit == QLatin1String("h")) {
        return from.addSecs(count * secondsPerHour);
    }
    return unit == QLatin1String("m") ? from.addSecs(count * secondsPerMinute) : QDateTime();
}

Moment relativeMoment(const QRegularExpressionMatch &match, const QDateTime &now)
{
    const bool isDay = match.captured(1).compare(QLatin1String("today"), Qt::CaseInsensitive) == 0;
    QDateTime moment = now;
    if (!match.captured(2).isEmpty()) {
        const QString unit = match.captured(4).toLower();
        const qint64 count =
            (match.captured(2) == QLatin1String("-") ? -1 : 1) * match.captured(3).toLongLong();
        const bool isDays = unit == QLatin1String("d") || unit == QLatin1String("w");
        if (isDay && !unit.isEmpty() && !isDays) {
            return {};
        }
        moment = shifted(now, count, isDay && unit.isEmpty() ? QStringLiteral("d") : unit);
    }
    if (!moment.isValid()) {
        return {};
    }
    return {moment.date(), isDay ? QString() : moment.toString(QStringLiteral("HHmmss")), !isDay};
}

QRegularExpressionMatch absoluteMatch(const QString &value)
{
    static const QString date =
        QStringLiteral("(?<year>\\d{4})(?<dash>[-./]?)(?<month>\\d{2})\\k<dash>(?<day>\\d{2})");
    static const QString time = QStringLiteral(
        "(?<hour>\\d{2})(?<colon>:?)(?<minute>\\d{2})(?:\\k<colon>(?<second>\\d{2}(?:\\.\\d{1,6})?))?");
    static const QRegularExpression withDate =
        wholeText(QStringLiteral("\\s*%1(?:(?:T|\\s+)%2)?\\s*").arg(date, time));
    static const QRegularExpression onlyTime = wholeText(QStringLiteral("\\s*%1\\s*").arg(time));
    const QRegularExpressionMatch match = withDate.match(value);
    return match.hasMatch() ? match : onlyTime.match(value);
}

Moment absoluteMoment(const QString &value)
{
    const QRegularExpressionMatch match = absoluteMatch(value);
    const QString hour = match.captured(QStringLiteral("hour"));
    const QString minute = match.captured(QStringLiteral("minute"));
    const QString second = match.captured(QStringLiteral("second"));
    const QString year = match.captured(QStringLiteral("year"));
    const QDate date(year.toInt(), match.captured(QStringLiteral("month")).toInt(),
        match.captured(QStringLiteral("day")).toInt());
    const bool isTime = QTime::isValid(hour.toInt(), minute.toInt(), second.leftRef(2).toInt());
    if (!isTime || (!year.isEmpty() && !date.isValid())) {
        return {};
    }
    return {date, hour + minute + second, false};
}

/// "1430" as "14:30".
QString withColons(QString time)
{
    if (time.size() > 4) {
        time.insert(4, QLatin1Char(':'));
    }
    return time.insert(2, QLatin1Char(':'));
}

} // namespace

namespace InquiryMoment {

bool isRelative(const QString &value)
{
    return relativeMatch(value).hasMatch();
}

QString storedBeginning(const QString &value, ColumnKind kind, const QDateTime &now)
{
    const QRegularExpressionMatch relative = relativeMatch(value);
    const Moment moment = relative.hasMatch() ? relativeMoment(relative, now) : absoluteMoment(value);
    if (moment.date.isValid() && (moment.date.year() < 1 || moment.date.year() > lastYear)) {
        return {};
    }
    if (kind == ColumnKind::Time) {
        return moment.date.isValid() && !moment.isRelativeTime ? QString() : moment.time;
    }
    if (!moment.date.isValid()) {
        return {};
    }
    if (kind == ColumnKind::Date) {
        const bool isDate = moment.time.isEmpty() || moment.isRelativeTime;
        return isDate ? moment.date.toString(QStringLiteral("yyyyMMdd")) : QString();
    }
    const QString date = moment.date.toString(Qt::ISODate);
    return moment.time.isEmpty() ? date : date + QLatin1Char(' ') + withColons(moment.time);
}

} // namespace InquiryMoment
