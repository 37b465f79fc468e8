#include "columntext.h"

#include "dicomdate.h"
#include "personname.h"

#include <QDateTime>
#include <QLocale>
#include <QStringList>
#include <QTime>

namespace {

constexpr qint64 nanosecondsPerMillisecond = 1'000'000;

QString timeText(const QString &stored)
{
    const QTime time = QTime::fromString(stored.left(6), QStringLiteral("HHmmss"));
    const bool isTime = time.isValid() && (stored.size() == 6 || stored.at(6) == QLatin1Char('.'));
    return isTime ? time.toString(Qt::ISODate) : stored;
}

/// Instance numbers and keys are names as much as quantities: no group separators.
QString numberText(const QVariant &value)
{
    if (value.type() == QVariant::Double) {
        return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    }
    return value.toString();
}

} // namespace

QString columnText(ColumnKind kind, const QVariant &value)
{
    switch (kind) {
    case ColumnKind::PersonName:
        return personNameForDisplay(value.toString());
    case ColumnKind::Date:
        return dateForDisplay(value.toString());
    case ColumnKind::Time:
        return timeText(value.toString());
    case ColumnKind::FileTime:
        return value.isNull() ? QString()
                              : QDateTime::fromMSecsSinceEpoch(value.toLongLong() / nanosecondsPerMillisecond)
                                    .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    case ColumnKind::Text:
    case ColumnKind::Number:
    case ColumnKind::DateTime:
        break;
    }
    return numberText(value);
}
