#include "safename.h"

#include <QSet>

namespace {

constexpr int mostBytes = 180; ///< of 255 in UTF-8, so that a number and a suffix find room
constexpr QLatin1Char stand('_');

bool isUnsafe(uint c)
{
    return c < 0x20 || c == 0x7F || QStringLiteral("<>:\"/\\|?*").contains(QChar(ushort(c)));
}

/// What is not seen or turns the reading direction: names would look alike, or like others.
bool isHidden(uint c)
{
    const QChar::Category category = QChar::category(c);
    return category == QChar::Other_Format || category == QChar::Other_Control
        || category == QChar::Other_Surrogate || category == QChar::Other_PrivateUse
        || category == QChar::Other_NotAssigned || category == QChar::Separator_Line
        || category == QChar::Separator_Paragraph;
}

QString withoutUnsafe(const QString &text)
{
    QString result;
    for (const uint c : text.normalized(QString::NormalizationForm_C).toUcs4()) {
        if (c < 0x80 && isUnsafe(c)) {
            result.append(stand);
        } else if (!isHidden(c)) {
            result.append(QString::fromUcs4(&c, 1));
        }
    }
    return result;
}

/// Dots and blanks at an end are dropped by some systems, and a dot at the start hides a file.
QString trimmed(QString name)
{
    const auto isEdge = [](QChar c) { return c.isSpace() || c == QLatin1Char('.'); };
    while (!name.isEmpty() && isEdge(name.back())) {
        name.chop(1);
    }
    int start = 0;
    while (start < name.size() && isEdge(name.at(start))) {
        ++start;
    }
    return name.mid(start);
}

QString shortened(QString name, int most)
{
    while (name.size() > most || name.toUtf8().size() > mostBytes) {
        const int last = name.at(name.size() - 1).isLowSurrogate() ? 2 : 1;
        name.chop(last);
    }
    return name;
}

bool isReserved(const QString &name)
{
    static const QSet<QString> devices = [] {
        QSet<QString> names{QStringLiteral("CON"), QStringLiteral("PRN"), QStringLiteral("AUX"),
            QStringLiteral("NUL"), QStringLiteral("CLOCK$")};
        for (int i = 0; i <= 9; ++i) {
            names.insert(QStringLiteral("COM%1").arg(i));
            names.insert(QStringLiteral("LPT%1").arg(i));
        }
        return names;
    }();
    return devices.contains(name.section(QLatin1Char('.'), 0, 0).trimmed().toUpper());
}

} // namespace

QString safeName(const QString &text, const QString &otherwise, int most)
{
    // Far more than will stay is not looked at, however long a text is.
    QString name = trimmed(shortened(trimmed(withoutUnsafe(text.left(4 * most))), most));
    if (name.isEmpty()) {
        return otherwise;
    }
    return isReserved(name) ? stand + name : name;
}
