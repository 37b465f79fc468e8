#include "keyfolders.h"

#include <QDir>

#include <algorithm>

namespace {

QLatin1String prefix(RecordLevel level)
{
    switch (level) {
    case RecordLevel::Patient:
        return QLatin1String("Pa");
    case RecordLevel::Study:
        return QLatin1String("St");
    case RecordLevel::Series:
    case RecordLevel::Image:
        break;
    }
    return QLatin1String("Se");
}

} // namespace

namespace KeyFolders {

QString name(RecordLevel level, qlonglong key)
{
    return prefix(level) + QString::number(key);
}

QString holder(RecordLevel level, const QString &destination)
{
    if (level == RecordLevel::Patient) {
        return {};
    }
    const auto upper = RecordLevel(int(level) - 1);
    QString first = name(upper, 0);
    if (!QFileInfo::exists(QDir(destination).filePath(first))) {
        return first;
    }
    // The one of studies has always been written small.
    return upper == RecordLevel::Patient ? QStringLiteral("pa_0") : prefix(upper) + QStringLiteral("_0");
}

QString fileName(const QString &path)
{
    const auto isSeparator = [](QChar c) { return c == QLatin1Char('/') || c == QLatin1Char('\\'); };
    const auto name = std::find_if(path.crbegin(), path.crend(), isSeparator);
    return path.right(int(name - path.crbegin()));
}

} // namespace KeyFolders
