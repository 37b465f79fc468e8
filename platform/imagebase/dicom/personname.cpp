#include "personname.h"

#include <QStringList>

namespace {

enum Component { Family, Given, Middle, Prefix, Suffix };

/// Scripts that put the family name first and nothing but a blank behind it.
bool isEastAsian(const QString &text)
{
    for (const uint c : text.toUcs4()) {
        switch (QChar::script(c)) {
        case QChar::Script_Han:
        case QChar::Script_Hiragana:
        case QChar::Script_Katakana:
        case QChar::Script_Hangul:
            return true;
        default:
            break;
        }
    }
    return false;
}

QString joined(QStringList parts, const QString &separator)
{
    parts.removeAll(QString());
    return parts.join(separator);
}

/// One group of a name: the family name stands first, so the prefix goes before the given name and the suffix
/// last.
QString groupForDisplay(const QString &group)
{
    QStringList parts = group.split(QLatin1Char('^'));
    for (QString &part : parts) {
        part = part.simplified();
    }
    const QString blank = QStringLiteral(" ");
    const QString comma = QStringLiteral(", ");
    if (isEastAsian(group)) {
        return joined(parts, blank);
    }
    const QString given = joined({parts.value(Prefix), parts.value(Given), parts.value(Middle)}, blank);
    return joined(QStringList{parts.value(Family), given} + parts.mid(Suffix), comma);
}

QString nameForDisplay(const QString &name)
{
    QStringList groups;
    for (const QString &group : name.split(QLatin1Char('='))) {
        const QString text = groupForDisplay(group);
        if (!text.isEmpty() && !groups.contains(text)) {
            groups.append(text);
        }
    }
    if (groups.size() < 2) {
        return groups.join(QString());
    }
    const QString first = groups.takeFirst();
    return QStringLiteral("%1 (%2)").arg(first, groups.join(QStringLiteral(", ")));
}

} // namespace

QString personNameForDisplay(const QString &dicomName)
{
    QStringList names;
    for (const QString &name : dicomName.split(QLatin1Char('\\'))) {
        names.append(nameForDisplay(name));
    }
    return joined(names, QStringLiteral("; "));
}

QString tidyPersonName(const QString &name)
{
    if (!name.endsWith(QLatin1Char('^')) && !name.endsWith(QLatin1Char('='))
        && !name.contains(QStringLiteral("^=")) && !name.contains(QStringLiteral(" ="))) {
        return name;
    }
    QStringList groups = name.split(QLatin1Char('='));
    for (QString &group : groups) {
        while (group.endsWith(QLatin1Char('^')) || group.endsWith(QLatin1Char(' '))) {
            group.chop(1);
        }
    }
    while (!groups.isEmpty() && groups.last().isEmpty()) {
        groups.removeLast();
    }
    return groups.join(QLatin1Char('='));
}

QString personNameFromTyped(const QString &text)
{
    const int comma = text.indexOf(QLatin1Char(','));
    return comma < 0 || text.contains(QLatin1Char('^'))
        ? text
        : text.left(comma).trimmed() + QLatin1Char('^') + text.mid(comma + 1).trimmed();
}
