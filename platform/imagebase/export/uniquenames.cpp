#include "uniquenames.h"

namespace {

constexpr QLatin1Char slash('/');
constexpr int longestSuffix = 5; ///< ".dcm" and its like

QString folded(const QString &folder, const QString &name)
{
    return folder + slash + name.normalized(QString::NormalizationForm_C).toCaseFolded();
}

} // namespace

void UniqueNames::take(const QString &folder, const QString &name)
{
    m_taken.insert(folded(folder, name));
}

QString UniqueNames::unique(const QString &folder, const QString &name)
{
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    const bool hasSuffix = dot > 0 && name.size() - dot <= longestSuffix;
    const QString stem = hasSuffix ? name.left(dot) : name;
    const QString suffix = name.mid(stem.size());
    QString candidate = name;
    int &number = m_numbers[folded(folder, name)];
    while (m_taken.contains(folded(folder, candidate))) {
        number = qMax(number, 1) + 1;
        candidate = QStringLiteral("%1 (%2)%3").arg(stem).arg(number).arg(suffix);
    }
    take(folder, candidate);
    return candidate;
}
