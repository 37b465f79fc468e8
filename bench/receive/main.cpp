// bench_receive INDEX OBJECTS: receives into the index, which is made where it is missing, as the workstation
// does by the settings of config/main.ini beside the index. Says "listening", and ends with one line of JSON
// once so many objects have their record.
#include "configlocation.h"
#include "createconnection.h"
#include "measurement.h"
#include "processmemory.h"
#include "receiveservice.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QTextStream>
#include <QTimer>

#include <cstdio>

namespace {

constexpr int lookMs = 2;

int receive(const QString &index, qint64 objects)
{
    ReceiveService service;
    service.openIndex(index);
    if (!service.status().listening) {
        return 1;
    }
    std::puts("listening");
    std::fflush(stdout);
    int mostWaiting = 0;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        const ReceiveStatus status = service.status();
        mostWaiting = qMax(mostWaiting, status.waiting);
        if (status.counts.indexed >= objects) {
            Measurement::print({{QStringLiteral("received"), status.counts.received},
                {QStringLiteral("mostWaiting"), mostWaiting},
                {QStringLiteral("peakMib"), double(ProcessMemory::peakResidentKib()) / 1024}});
            QCoreApplication::quit();
        }
    });
    look.start(lookMs);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        QTextStream(stderr) << "bench_receive INDEX OBJECTS\n";
        return 2;
    }
    ConfigLocation::setBase(QFileInfo(arguments.at(1)).absolutePath());
    setDatabasePath(arguments.at(1));
    if (!createConnection()) {
        return 1;
    }
    QSqlDatabase::database().close();
    return receive(arguments.at(1), arguments.at(2).toLongLong());
}
