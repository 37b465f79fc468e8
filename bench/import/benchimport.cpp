// bench_import INDEX reference|copy PATH...: imports into the index, which is made where it is missing
#include "createconnection.h"
#include "importwatch.h"
#include "measurement.h"
#include "processmemory.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QTextStream>

namespace {

QJsonObject describe(const ImportReport &report, const ImportWatch &watch, double seconds)
{
    const auto count = [&report](FileVerdict verdict) { return report.of(verdict); };
    return {{QStringLiteral("seconds"), seconds}, {QStringLiteral("found"), report.found()},
        {QStringLiteral("rate"), double(report.found()) / seconds},
        {QStringLiteral("new"), count(FileVerdict::New)},
        {QStringLiteral("alreadyThere"), count(FileVerdict::AlreadyThere)},
        {QStringLiteral("replaced"), count(FileVerdict::Replaced)},
        {QStringLiteral("notIndexed"),
            report.found() - count(FileVerdict::New) - count(FileVerdict::AlreadyThere)
                - count(FileVerdict::Replaced)},
        {QStringLiteral("peakMib"), double(ProcessMemory::peakResidentKib()) / 1024},
        {QStringLiteral("silence"), watch.longestSilence()},
        {QStringLiteral("firstPatient"), watch.firstPatient()}};
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTextStream errors(stderr);
    if (arguments.size() < 4) {
        errors << "bench_import INDEX reference|copy PATH...\n";
        return 2;
    }
    ImportRequest request;
    request.databasePath = arguments.at(1);
    request.mode = arguments.at(2) == QLatin1String("copy") ? ImportMode::Copy : ImportMode::Reference;
    request.paths = arguments.mid(3);
    setDatabasePath(request.databasePath);
    if (!createConnection()) {
        errors << connectionFailure().path << ": " << connectionFailure().detail << '\n';
        return 1;
    }
    QSqlDatabase::database().close();

    QElapsedTimer time;
    time.start();
    Importer importer(request);
    ImportWatch watch(importer, request.databasePath);
    const ImportReport report = importer.run();
    const double seconds = double(time.nsecsElapsed()) / 1e9;
    watch.stop();
    Measurement::print(describe(report, watch, seconds));
    return report.end == ImportEnd::Complete ? 0 : 1;
}
