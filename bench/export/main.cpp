// bench_export INDEX silent|folders|zip|media TARGET: exports all patients, as the action or "Export As" does
#include "createconnection.h"
#include "exporter.h"
#include "measurement.h"
#include "recordcopy.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonObject>
#include <QSqlQuery>
#include <QTextStream>
#include <QVariant>

namespace {

QList<qlonglong> allPatients()
{
    QList<qlonglong> keys;
    QSqlQuery query(QStringLiteral("SELECT pk FROM patient"));
    while (query.next()) {
        keys.append(query.value(0).toLongLong());
    }
    return keys;
}

bool exportAs(const QString &format, const QString &target)
{
    ExportRequest request;
    request.databasePath = databasePath();
    request.keys = allPatients();
    request.target = target;
    if (format == QLatin1String("zip")) {
        request.format = ExportFormat::Zip;
        request.target += QStringLiteral("/images.zip");
    } else if (format == QLatin1String("media")) {
        request.format = ExportFormat::Media;
    }
    const ExportReport report = Exporter(request).run();
    return report.end == ExportEnd::Complete && report.failures.isEmpty();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    QTextStream errors(stderr);
    if (arguments.size() != 3) {
        errors << "bench_export INDEX silent|folders|zip|media TARGET\n";
        return 2;
    }
    setDatabasePath(arguments.at(0));
    if (!createConnection()) {
        errors << connectionFailure().path << ": " << connectionFailure().detail << '\n';
        return 1;
    }
    QElapsedTimer time;
    time.start();
    bool good = true;
    if (arguments.at(1) == QLatin1String("silent")) {
        RecordCopy(arguments.at(2)).copy(RecordLevel::Patient, allPatients());
    } else {
        good = exportAs(arguments.at(1), arguments.at(2));
    }
    const double seconds = double(time.nsecsElapsed()) / 1e9;
    closeConnection();
    Measurement::print({{QStringLiteral("seconds"), seconds}});
    return good ? 0 : 1;
}
