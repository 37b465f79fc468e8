#include "keyfilter.h"

#include <QStringList>

#include <algorithm>
#include <vector>

namespace {

/// No row has this key.
constexpr qlonglong noKey = -1;
/// SQLite refuses longer chains of conditions.
constexpr int longestChain = 500;
/// A shorter run of keys is no shorter as a range.
constexpr qlonglong shortestRange = 8;

/// Keys that follow one another without a gap.
struct Run
{
    qlonglong first;
    qlonglong last;
    qlonglong size() const { return last - first + 1; }
};

std::vector<Run> runsOf(const QList<qlonglong> &keys)
{
    std::vector<qlonglong> sorted(keys.begin(), keys.end());
    std::sort(sorted.begin(), sorted.end());
    std::vector<Run> runs;
    for (const qlonglong key : sorted) {
        if (runs.empty() || key > runs.back().last + 1) {
            runs.push_back({key, key});
        } else {
            runs.back().last = key;
        }
    }
    return runs;
}

QString chain(const QList<qlonglong> &keys)
{
    QStringList parts;
    parts.reserve(keys.size());
    for (const qlonglong key : keys) {
        parts.append(QStringLiteral("pk ='%1'").arg(key));
    }
    return parts.join(QStringLiteral(" or "));
}

QString rangesAndList(std::vector<Run> runs)
{
    // The longest runs become ranges, as many as a chain may hold beside the list of all other keys.
    std::stable_sort(
        runs.begin(), runs.end(), [](const Run &a, const Run &b) { return a.size() > b.size(); });
    QStringList parts;
    QStringList listed;
    for (const Run &run : runs) {
        if (run.size() >= shortestRange && parts.size() < longestChain - 1) {
            parts.append(QStringLiteral("pk between '%1' and '%2'").arg(run.first).arg(run.last));
            continue;
        }
        for (qlonglong key = run.first; key <= run.last; ++key) {
            listed.append(QStringLiteral("'%1'").arg(key));
        }
    }
    if (!listed.isEmpty()) {
        parts.append(QStringLiteral("pk in (%1)").arg(listed.join(QLatin1Char(','))));
    }
    return parts.join(QStringLiteral(" or "));
}

} // namespace

QString keyFilter(const QList<qlonglong> &keys)
{
    if (keys.isEmpty()) {
        return chain({noKey});
    }
    return keys.size() <= longestChain ? chain(keys) : rangesAndList(runsOf(keys));
}
