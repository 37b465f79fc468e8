#include "dicomdestination.h"

#include "configlocation.h"
#include "inifile.h"

#include <QDir>
#include <QSettings>

#include <algorithm>

namespace {

constexpr char aeTitleKey[] = "AETitle";
constexpr char ipKey[] = "IP";
constexpr char portKey[] = "Port";
constexpr int longestAeTitle = 16;
constexpr int highestPort = 65535;

bool isAeTitle(const QString &text)
{
    const auto isAllowed = [](QChar c) {
        return c >= QLatin1Char(' ') && c <= QLatin1Char('~') && c != QLatin1Char('\\');
    };
    return !text.trimmed().isEmpty() && text.size() <= longestAeTitle
        && std::all_of(text.begin(), text.end(), isAllowed);
}

/// QSettings takes a slash for a level, and has a meaning of its own for "General".
bool isGroupName(const QString &name)
{
    const auto isForbidden = [](QChar c) {
        return c == QLatin1Char('/') || c == QLatin1Char('\\') || c == QLatin1Char('[')
            || c == QLatin1Char(']') || !c.isPrint();
    };
    return std::none_of(name.begin(), name.end(), isForbidden)
        && name.compare(QLatin1String("general"), Qt::CaseInsensitive) != 0;
}

bool writeOne(const QString &file, const DicomDestination &destination)
{
    const QString prefix = destination.name + QLatin1Char('/');
    return IniFile::setValue(file, prefix + QLatin1String(aeTitleKey), destination.aeTitle)
        && IniFile::setValue(file, prefix + QLatin1String(ipKey), destination.ip)
        && IniFile::setValue(file, prefix + QLatin1String(portKey), destination.port);
}

} // namespace

namespace DestinationSettings {

QString file()
{
    return QDir::cleanPath(ConfigLocation::unchecked(QLatin1String(ConfigKey::dicomSendServiceIni)));
}

QVector<DicomDestination> read()
{
    QSettings settings(file(), QSettings::IniFormat);
    QVector<DicomDestination> destinations;
    const QStringList groups = settings.childGroups();
    for (const QString &group : groups) {
        settings.beginGroup(group);
        destinations.append({group, settings.value(QLatin1String(aeTitleKey)).toString(),
            settings.value(QLatin1String(ipKey)).toString(), settings.value(QLatin1String(portKey)).toInt()});
        settings.endGroup();
    }
    return destinations;
}

bool write(const QVector<DicomDestination> &destinations)
{
    bool good = true;
    const QVector<DicomDestination> before = read();
    for (const DicomDestination &old : before) {
        const bool stays = std::any_of(destinations.begin(), destinations.end(),
            [&old](const DicomDestination &kept) { return kept.name == old.name; });
        good = (stays || IniFile::removeGroup(file(), old.name)) && good;
    }
    for (const DicomDestination &destination : destinations) {
        good = (before.contains(destination) || writeOne(file(), destination)) && good;
    }
    return good;
}

DestinationFault faultOf(const QVector<DicomDestination> &destinations, int place)
{
    const DicomDestination &asked = destinations[place];
    if (asked.name.trimmed().isEmpty()) {
        return DestinationFault::NoName;
    }
    if (!isGroupName(asked.name)) {
        return DestinationFault::BadName;
    }
    const auto isCalledSo = [&asked](const DicomDestination &other) {
        return other.name.compare(asked.name, Qt::CaseInsensitive) == 0;
    };
    if (std::count_if(destinations.begin(), destinations.end(), isCalledSo) > 1) {
        return DestinationFault::SameName;
    }
    if (!isAeTitle(asked.aeTitle)) {
        return DestinationFault::BadAeTitle;
    }
    if (asked.ip.trimmed().isEmpty()) {
        return DestinationFault::NoAddress;
    }
    return asked.port >= 1 && asked.port <= highestPort ? DestinationFault::None : DestinationFault::BadPort;
}

} // namespace DestinationSettings
