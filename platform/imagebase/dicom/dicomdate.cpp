#include "dicomdate.h"

#include <QDate>

QString dateForDisplay(const QString &dicomDate)
{
    const QDate day = QDate::fromString(dicomDate.trimmed(), QStringLiteral("yyyyMMdd"));
    return day.isValid() ? day.toString(Qt::ISODate) : dicomDate;
}
