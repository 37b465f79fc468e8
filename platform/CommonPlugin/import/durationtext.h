#pragma once

#include <QString>

/// Minutes and seconds, with hours where there are any: "0:07", "1:02:03".
inline QString durationText(qint64 milliseconds)
{
    const qint64 seconds = milliseconds / 1000;
    const QLatin1Char zero('0');
    const QString tail = QStringLiteral(":%1").arg(seconds % 60, 2, 10, zero);
    const qint64 minutes = seconds / 60;
    return minutes < 60 ? QString::number(minutes) + tail
                        : QStringLiteral("%1:%2").arg(minutes / 60).arg(minutes % 60, 2, 10, zero) + tail;
}
