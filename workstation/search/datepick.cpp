#include "datepick.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr int daysOfWeek = 7;
constexpr int daysOfMonth = 30;

constexpr std::array<std::pair<DatePick, const char *>, 7> names{{
    {DatePick::AllDates, "all"},
    {DatePick::Today, "today"},
    {DatePick::Yesterday, "yesterday"},
    {DatePick::Week, "7days"},
    {DatePick::Month, "30days"},
    {DatePick::NoDate, "nodate"},
    {DatePick::ArrivedToday, "arrivedtoday"},
}};

} // namespace

StudyDates studyDates(DatePick pick, const QDate &today)
{
    const auto lastDays = [&today](int days) {
        return StudyDates{StudyDates::Kind::Between, today.addDays(1 - days), today};
    };
    switch (pick) {
    case DatePick::Today:
        return lastDays(1);
    case DatePick::Yesterday:
        return {StudyDates::Kind::Between, today.addDays(-1), today.addDays(-1)};
    case DatePick::Week:
        return lastDays(daysOfWeek);
    case DatePick::Month:
        return lastDays(daysOfMonth);
    case DatePick::NoDate:
        return {StudyDates::Kind::Missing, {}, {}};
    case DatePick::AllDates:
    case DatePick::ArrivedToday:
    case DatePick::Other:
        break;
    }
    return {};
}

QString datePickName(DatePick pick)
{
    const auto entry =
        std::find_if(names.begin(), names.end(), [pick](const auto &name) { return name.first == pick; });
    return entry == names.end() ? QString() : QString::fromLatin1(entry->second);
}

DatePick datePickOf(const QString &name)
{
    const auto entry = std::find_if(names.begin(), names.end(),
        [&name](const auto &known) { return name == QLatin1String(known.second); });
    return entry == names.end() ? DatePick::ArrivedToday : entry->first;
}
