// The process that the fault run of exports kills:
//   exportprocess INDEX folders|keys|zip|media TARGET
// Exports all patients. Exit status 0 where all of it is there.
#include "exporter.h"
#include "indexconnection.h"

#include <QCoreApplication>
#include <QMap>
#include <QSqlQuery>
#include <QVariant>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    const QMap<QString, ExportFormat> formats{{QStringLiteral("folders"), ExportFormat::NamedFolders},
        {QStringLiteral("keys"), ExportFormat::KeyFolders}, {QStringLiteral("zip"), ExportFormat::Zip},
        {QStringLiteral("media"), ExportFormat::Media}};
    if (arguments.size() != 3 || !formats.contains(arguments.at(1))) {
        return 2;
    }
    ExportRequest request;
    request.databasePath = arguments.at(0);
    request.format = formats.value(arguments.at(1));
    request.target = arguments.at(2);
    {
        const IndexConnection connection(request.databasePath);
        QSqlQuery patients(QStringLiteral("SELECT pk FROM patient"), connection.database());
        while (patients.next()) {
            request.keys.append(patients.value(0).toLongLong());
        }
    }
    const ExportReport report = Exporter(request).run();
    return report.end == ExportEnd::Complete && report.failures.isEmpty() ? 0 : 1;
}
