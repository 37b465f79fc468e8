#include "dicomnode.h"

#include <algorithm>

bool isAeTitle(const QString &title)
{
    const auto isAllowed = [](QChar c) {
        return c >= QLatin1Char(' ') && c <= QLatin1Char('~') && c != QLatin1Char('\\');
    };
    return !title.trimmed().isEmpty() && title.size() <= longestAeTitle
        && std::all_of(title.begin(), title.end(), isAllowed);
}
