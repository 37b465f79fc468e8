// bench_receive INDEX PORT synced|unsynced OBJECTS: receives into the index, which is made where it is
// missing, says "listening", and ends with one line of JSON once so many objects have their record.
#include "createconnection.h"
#include "measurement.h"
#include "objectspool.h"
#include "processmemory.h"
#include "receivejournal.h"
#include "spoolindexer.h"
#include "storescp.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QTextStream>
#include <QThread>

#include <cstdio>

namespace {

constexpr int lookMs = 2;

int receive(const QString &index, int port, bool synced, qint64 objects)
{
    ReceiveJournal journal(index + QStringLiteral(".problems"));
    ObjectSpool spool(index, synced);
    if (spool.open() != 0) {
        return 1;
    }
    SpoolIndexer indexer(index, spool, journal, synced);
    StoreProvider provider(spool, indexer, journal);
    ScpSettings settings;
    settings.aeTitle = QStringLiteral("BENCH");
    settings.bindAddress = QStringLiteral("127.0.0.1");
    settings.port = port;
    StoreScp scp(settings, provider);
    if (scp.start().reason != ListenFailure::Reason::None) {
        return 1;
    }
    std::puts("listening");
    std::fflush(stdout);
    int mostWaiting = 0;
    while (journal.counts().indexed < objects) {
        mostWaiting = qMax(mostWaiting, indexer.waiting());
        QThread::msleep(lookMs);
    }
    Measurement::print({{QStringLiteral("received"), journal.counts().received},
        {QStringLiteral("mostWaiting"), mostWaiting},
        {QStringLiteral("peakMib"), double(ProcessMemory::peakResidentKib()) / 1024}});
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5) {
        QTextStream(stderr) << "bench_receive INDEX PORT synced|unsynced OBJECTS\n";
        return 2;
    }
    setDatabasePath(arguments.at(1));
    if (!createConnection()) {
        return 1;
    }
    QSqlDatabase::database().close();
    return receive(arguments.at(1), arguments.at(2).toInt(), arguments.at(3) == QLatin1String("synced"),
        arguments.at(4).toLongLong());
}
