// bench_deletion INDEX TABLE KEY...: deletes the records of these keys with their files, as a user would
#include "createconnection.h"
#include "measurement.h"
#include "recorddeletion.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonObject>
#include <QTextStream>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    QTextStream errors(stderr);
    if (arguments.size() < 3) {
        errors << "bench_deletion INDEX TABLE KEY...\n";
        return 2;
    }
    setDatabasePath(arguments.at(0));
    if (!createConnection()) {
        errors << connectionFailure().path << ": " << connectionFailure().detail << '\n';
        return 1;
    }
    QList<qlonglong> keys;
    for (const QString &key : arguments.mid(2)) {
        keys.append(key.toLongLong());
    }
    QElapsedTimer time;
    time.start();
    const DeletionReport report = RecordDeletion(QSqlDatabase::database(), false).run(arguments.at(1), keys);
    const double seconds = double(time.nsecsElapsed()) / 1e9;
    closeConnection();
    Measurement::print({{QStringLiteral("seconds"), seconds}, {QStringLiteral("files"), report.removedFiles},
        {QStringLiteral("left"), report.left.size()}});
    return report.error.isValid() ? 1 : 0;
}
