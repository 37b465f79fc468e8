#include "webarchive.h"

#include "postgresserver.h"

#include <QJsonArray>

namespace {

QString pluginPath(const char *name)
{
    return QStringLiteral("/usr/share/orthanc/plugins/lib%1.so").arg(QLatin1String(name));
}

} // namespace

namespace WebArchive {

std::unique_ptr<DicomServer> start(const QJsonObject &settings, const PostgresServer *database)
{
    QJsonArray plugins{pluginPath("OrthancDicomWeb")};
    QJsonObject own{{QStringLiteral("AuthenticationEnabled"), true},
        {QStringLiteral("RegisteredUsers"), QJsonObject{{QLatin1String(user), QLatin1String(password)}}},
        {QStringLiteral("OverwriteInstances"), true}};
    if (database) {
        plugins.append(pluginPath("OrthancPostgreSQLIndex"));
        plugins.append(pluginPath("OrthancPostgreSQLStorage"));
        own[QStringLiteral("PostgreSQL")] = database->archiveSettings();
    }
    own[QStringLiteral("Plugins")] = plugins;
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
