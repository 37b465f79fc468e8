#pragma once

#include <QRegularExpression>
#include <QString>

/// A caption without what marks its key, for a title or a screen reader: "&Search" and "搜索(&S)" are
/// "Search" and "搜索".
inline QString plainCaption(QString caption)
{
    static const QRegularExpression key(QStringLiteral("\\s*\\(&.\\)"));
    return caption.remove(key).remove(QLatin1Char('&'));
}
