#include "forwarding.h"

#include "configlocation.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QSettings>

namespace Forwarding {

QVector<Destination> destinations()
{
    const QSettings settings(
        ConfigLocation::unchecked(QLatin1String(ConfigKey::dicomSendServiceIni)), QSettings::IniFormat);
    QVector<Destination> found;
    for (const QString &group : settings.childGroups()) {
        found.append({settings.value(QStringLiteral("%1/AETitle").arg(group)).toString(),
            settings.value(QStringLiteral("%1/IP").arg(group)).toString(),
            settings.value(QStringLiteral("%1/Port").arg(group)).toInt()});
    }
    return found;
}

QStringList entriesOf(const QString &path)
{
    const QFileInfo info(path);
    if (info.isFile()) {
        return {path};
    }
    QStringList entries;
    if (info.isDir()) {
        QDirIterator walk(path, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QString entry = walk.next();
            const QString name = walk.fileName();
            if (name != QLatin1String(".") && name != QLatin1String("..")) {
                entries.append(entry);
            }
        }
    }
    return entries;
}

} // namespace Forwarding
