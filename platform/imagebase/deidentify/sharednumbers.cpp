#include "sharednumbers.h"

#include <QHash>
#include <QStringList>

#include <algorithm>

QSet<QByteArray> sharedNumbers(const std::vector<DeidentifiedFile> &files)
{
    QSet<QByteArray> several;
    QHash<QByteArray, QStringList> known;
    for (const DeidentifiedFile &result : files) {
        if (result.number.isEmpty() || result.problem != DeidentifyProblem::None) {
            continue;
        }
        const QStringList person = result.person.split(QLatin1Char('\\'));
        QStringList &first = known[result.number];
        first = first.isEmpty() ? person : first;
        for (int part = 0; part < std::min(first.size(), person.size()); ++part) {
            first[part] = first.at(part).isEmpty() ? person.at(part) : first.at(part);
            if (!person.at(part).isEmpty() && person.at(part) != first.at(part)) {
                several.insert(result.number);
            }
        }
    }
    return several;
}
