#include "dicomdestination.h"

#include "configlocation.h"
#include "inifile.h"

#include <QDir>
#include <QMap>
#include <QSettings>

#include <algorithm>

namespace {

constexpr char aeTitleKey[] = "AETitle";
constexpr char ipKey[] = "IP";
constexpr char portKey[] = "Port";

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

using Values = QMap<QString, QVariant>;

/// What stands in the file about a destination that is renamed, by key.
Values storedValues(const QString &file, const DicomDestination &destination)
{
    Values values;
    if (!destination.storedAs.isEmpty() && destination.storedAs != destination.name) {
        QSettings settings(file, QSettings::IniFormat);
        settings.beginGroup(destination.storedAs);
        const QStringList keys = settings.allKeys();
        for (const QString &key : keys) {
            values.insert(key, settings.value(key));
        }
    }
    return values;
}

bool writeValues(const QString &file, const QString &group, const Values &values)
{
    bool good = true;
    for (auto value = values.begin(); value != values.end(); ++value) {
        good = IniFile::setValue(file, group + QLatin1Char('/') + value.key(), value.value()) && good;
    }
    return good;
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
            settings.value(QLatin1String(ipKey)).toString(), settings.value(QLatin1String(portKey)).toInt(),
            group});
        settings.endGroup();
    }
    return destinations;
}

bool write(const QVector<DicomDestination> &destinations)
{
    bool good = true;
    const QVector<DicomDestination> before = read();
    QVector<Values> carried; // taken before anything goes: names may be exchanged
    for (const DicomDestination &destination : destinations) {
        carried.append(storedValues(file(), destination));
    }
    for (const DicomDestination &old : before) {
        const bool stays =
            std::any_of(destinations.begin(), destinations.end(), [&old](const DicomDestination &kept) {
                return kept.name == old.name && kept.storedAs == old.name;
            });
        good = (stays || IniFile::removeGroup(file(), old.name)) && good;
    }
    for (int i = 0; i < destinations.size(); ++i) {
        const DicomDestination &destination = destinations[i];
        const bool isAsStored = destination.storedAs == destination.name && before.contains(destination);
        good = (isAsStored
                   || (writeValues(file(), destination.name, carried[i]) && writeOne(file(), destination)))
            && good;
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
