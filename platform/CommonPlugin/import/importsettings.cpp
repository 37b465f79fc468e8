#include "importsettings.h"

#include "configlocation.h"
#include "createconnection.h"

#include <QSettings>

namespace {

int intFrom(const QString &file, const char *key)
{
    return file.isEmpty() ? 0 : QSettings(file, QSettings::IniFormat).value(QLatin1String(key), 0).toInt();
}

} // namespace

namespace ImportSettings {

bool isMode(int mode)
{
    return mode == int(ImportMode::Reference) || mode == int(ImportMode::Copy);
}

int mode()
{
    const QString file = ConfigLocation::checkedFromWorkingDirectory(QLatin1String(ConfigKey::mainIni));
    return intFrom(file, ConfigKey::importMode);
}

DuplicatePolicy policy()
{
    const QString file = ConfigLocation::checked(QLatin1String(ConfigKey::mainIni));
    return intFrom(file, ConfigKey::duplicatePolicy) == int(DuplicatePolicy::TakeNew)
        ? DuplicatePolicy::TakeNew
        : DuplicatePolicy::KeepOld;
}

ImportRequest request(const QStringList &paths, int mode)
{
    ImportRequest request;
    request.paths = paths;
    request.mode = static_cast<ImportMode>(mode);
    request.policy = policy();
    request.databasePath = databasePath();
    return request;
}

} // namespace ImportSettings
