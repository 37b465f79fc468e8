#include "httpuploadfile.h"

#include <QCoreApplication>
#include <QSettings>

namespace {

constexpr char defaultFile[] = "/config/experts.ini";
constexpr char nameKey[] = "/name";

QString &chosenFile()
{
    static QString path;
    return path;
}

QString expertFile()
{
    return chosenFile().isEmpty() ? QCoreApplication::applicationDirPath() + QLatin1String(defaultFile)
                                  : chosenFile();
}

} // namespace

HttpUploadFile *HttpUploadFile::instance()
{
    static HttpUploadFile only;
    return &only;
}

void HttpUploadFile::setExpertFile(const QString &path)
{
    chosenFile() = path;
}

void HttpUploadFile::expertInfoList()
{
    QSettings experts(expertFile(), QSettings::IniFormat);
    experts.setIniCodec("UTF-8");
    m_expertNames.clear();
    const QStringList ids = experts.childGroups();
    for (const QString &id : ids) {
        m_expertNames.append(experts.value(id + QLatin1String(nameKey), id).toString());
    }
}

QStringList HttpUploadFile::getExpertNames() const
{
    return m_expertNames;
}
