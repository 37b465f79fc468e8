#include "configlocation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

namespace {

constexpr char baseVariable[] = "PATIENTMANAGER_CONFIG_BASE";

QString &chosenBase()
{
    static QString folder;
    return folder;
}

QString existing(const QString &first, const QString &second)
{
    if (QFileInfo::exists(first)) {
        return first;
    }
    return QFileInfo::exists(second) ? second : QString();
}

} // namespace

namespace ConfigLocation {

void setBase(const QString &folder)
{
    chosenBase() = folder.isEmpty() ? QString() : QDir(folder).absolutePath();
}

QString base()
{
    return chosenBase().isEmpty() ? QCoreApplication::applicationDirPath() : chosenBase();
}

void handOn()
{
    qputenv(baseVariable, QFile::encodeName(chosenBase()));
}

void takeHandedOn()
{
    setBase(QFile::decodeName(qgetenv(baseVariable)));
}

QString besideProgram(const QString &file)
{
    return base() + QLatin1String("/config/") + file;
}

QString aboveProgram(const QString &file)
{
    return base() + QLatin1String("/../config/") + file;
}

QString checked(const QString &file)
{
    return existing(besideProgram(file), aboveProgram(file));
}

QString checkedFromWorkingDirectory(const QString &file)
{
    return existing(QLatin1String("config/") + file, aboveProgram(file));
}

QString unchecked(const QString &file)
{
    const QString first = besideProgram(file);
    return QFileInfo::exists(first) ? first : aboveProgram(file);
}

QString grouped(const QString &file)
{
    const QString first = besideProgram(file);
    const QSettings settings(first, QSettings::IniFormat);
    return settings.childGroups().isEmpty() ? aboveProgram(file) : first;
}

} // namespace ConfigLocation
