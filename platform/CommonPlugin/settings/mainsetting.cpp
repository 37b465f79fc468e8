#include "mainsetting.h"

#include "configlocation.h"
#include "inifile.h"

#include <QDir>
#include <QSettings>

namespace {

QString mainIni()
{
    return QLatin1String(ConfigKey::mainIni);
}

/// A file gives texts back whatever was written, and a list of one as a text.
bool isSame(const QVariant &stored, const QVariant &value)
{
    return value.type() == QVariant::StringList ? stored.toStringList() == value.toStringList()
                                                : stored.toString() == value.toString();
}

} // namespace

MainSetting::MainSetting(const char *key, Reader reader)
    : m_key(key)
    , m_reader(reader)
{ }

MainSetting MainSetting::importMode()
{
    return {ConfigKey::importMode, Reader::MainWindow};
}

MainSetting MainSetting::deleteMode()
{
    return {ConfigKey::deleteMode, Reader::Anybody};
}

MainSetting MainSetting::duplicatePolicy()
{
    return {ConfigKey::duplicatePolicy, Reader::Anybody};
}

MainSetting MainSetting::databasePath()
{
    return {ConfigKey::databasePath, Reader::Anybody};
}

MainSetting MainSetting::dicom(const char *key)
{
    return {key, Reader::Anybody};
}

QString MainSetting::key() const
{
    return QLatin1String(m_key);
}

QString MainSetting::found() const
{
    return m_reader == Reader::MainWindow ? ConfigLocation::checkedFromWorkingDirectory(mainIni())
                                          : ConfigLocation::checked(mainIni());
}

QString MainSetting::file() const
{
    QString path = found();
    if (path.isEmpty()) {
        // The main window never looks beside the program.
        path = m_reader == Reader::MainWindow ? ConfigLocation::aboveProgram(mainIni())
                                              : ConfigLocation::besideProgram(mainIni());
    }
    return QDir::cleanPath(path);
}

QVariant MainSetting::value() const
{
    const QString path = found();
    return path.isEmpty() ? QVariant() : QSettings(path, QSettings::IniFormat).value(key());
}

bool MainSetting::write(const QVariant &value) const
{
    const QVariant now = this->value();
    if (now.isValid() && isSame(now, value)) {
        return true;
    }
    return IniFile::setValue(file(), key(), value);
}
