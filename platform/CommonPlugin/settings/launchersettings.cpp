#include "launchersettings.h"

#include "configlocation.h"
#include "inifile.h"

#include <QCoreApplication>
#include <QDir>
#include <QSettings>

namespace {

constexpr char group[] = "launcher/";

QString mainIni()
{
    return QLatin1String(ConfigKey::mainIni);
}

QString keyOf(LauncherId id, const char *part)
{
    return QLatin1String(group) + LauncherSettings::key(id) + QLatin1String(part);
}

QString programKey(LauncherId id)
{
    return keyOf(id, "Program");
}

QString argumentsKey(LauncherId id)
{
    return keyOf(id, "Arguments");
}

} // namespace

namespace LauncherSettings {

QVector<LauncherId> all()
{
    return {LauncherId::Joint, LauncherId::Compare, LauncherId::Swi, LauncherId::BrainSegment,
        LauncherId::Vessel};
}

QString caption(LauncherId id)
{
    switch (id) {
    case LauncherId::Joint:
        return QCoreApplication::translate("LauncherSettings", "Joint");
    case LauncherId::Compare:
        return QCoreApplication::translate("LauncherSettings", "图像对比");
    case LauncherId::Vessel:
        return QCoreApplication::translate("LauncherSettings", "Vessel");
    case LauncherId::Swi:
        return QCoreApplication::translate("LauncherSettings", "SWI");
    case LauncherId::BrainSegment:
        return QCoreApplication::translate("LauncherSettings", "Infarction");
    }
    return {};
}

QString key(LauncherId id)
{
    switch (id) {
    case LauncherId::Joint:
        return QStringLiteral("joint");
    case LauncherId::Compare:
        return QStringLiteral("compare");
    case LauncherId::Vessel:
        return QStringLiteral("vessel");
    case LauncherId::Swi:
        return QStringLiteral("swi");
    case LauncherId::BrainSegment:
        return QStringLiteral("brainSegment");
    }
    return {};
}

Launcher read(LauncherId id)
{
    const QString file = ConfigLocation::checked(mainIni());
    if (file.isEmpty()) {
        return {};
    }
    const QSettings settings(file, QSettings::IniFormat);
    return {
        settings.value(programKey(id)).toString().trimmed(), settings.value(argumentsKey(id)).toStringList()};
}

bool write(LauncherId id, const Launcher &launcher)
{
    if (launcher == read(id)) {
        return true;
    }
    const QString file = writtenFile();
    return IniFile::setValue(file, programKey(id), launcher.program)
        && IniFile::setValue(file, argumentsKey(id), launcher.arguments);
}

QString writtenFile()
{
    const QString found = ConfigLocation::checked(mainIni());
    return QDir::cleanPath(found.isEmpty() ? ConfigLocation::besideProgram(mainIni()) : found);
}

QStringList placeholders()
{
    QStringList all;
    for (const char *text : {LauncherPlaceholder::files, LauncherPlaceholder::fileList,
             LauncherPlaceholder::studyUid, LauncherPlaceholder::seriesUid, LauncherPlaceholder::patientId,
             LauncherPlaceholder::index, LauncherPlaceholder::workstation}) {
        all.append(QLatin1String(text));
    }
    return all;
}

} // namespace LauncherSettings
