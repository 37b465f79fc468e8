#include "webarchive.h"

#include <QJsonArray>

namespace WebArchive {

std::unique_ptr<DicomServer> start(const QJsonObject &settings)
{
    QJsonObject own{{QStringLiteral("Plugins"),
                        QJsonArray{QStringLiteral("/usr/share/orthanc/plugins/libOrthancDicomWeb.so")}},
        {QStringLiteral("AuthenticationEnabled"), true},
        {QStringLiteral("RegisteredUsers"), QJsonObject{{QLatin1String(user), QLatin1String(password)}}},
        {QStringLiteral("OverwriteInstances"), true}};
    for (auto setting = settings.begin(); setting != settings.end(); ++setting) {
        own[setting.key()] = setting.value();
    }
    return DicomServer::orthanc({}, own);
}

QString address(const DicomServer &archive)
{
    return QStringLiteral("http://%1:%2/dicom-web").arg(DicomServer::host()).arg(archive.httpPort());
}

} // namespace WebArchive
