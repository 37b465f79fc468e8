#include "dicomdate.h"

#include <QDate>

QString dateForDisplay(const QString &dicomDate)
{
    const QDate day = QDate::fromString(dicomDate, QStringLiteral("yyyyMMdd"));
    return day.isValid() ? day.toString(Qt::ISODate) : dicomDate;
}
