// The process that the fault test of deletions kills:
//   deletionprocess delete INDEX TABLE KEY...
//   deletionprocess start INDEX
// The second does what a start of the workstation does about what was left. Answers with one line of JSON.
#include "createconnection.h"
#include "indexconnection.h"
#include "recorddeletion.h"
#include "storesweep.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace {

void answer(const DeletionReport &report, const StoreSweep &sweep)
{
    const QJsonObject object{{QStringLiteral("error"), report.error.text()},
        {QStringLiteral("removed"), report.removedFiles}, {QStringLiteral("left"), report.left.size()},
        {QStringLiteral("swept"), sweep.removed.size()},
        {QStringLiteral("notSwept"), QJsonArray::fromStringList(sweep.left)}};
    std::puts(QJsonDocument(object).toJson(QJsonDocument::Compact).constData());
}

int deleteRecords(const QStringList &arguments)
{
    setDatabasePath(arguments.at(0));
    if (!createConnection()) {
        return 1;
    }
    QList<qlonglong> keys;
    for (const QString &key : arguments.mid(2)) {
        keys.append(key.toLongLong());
    }
    answer(RecordDeletion(QSqlDatabase::database(), false).run(arguments.at(1), keys), {});
    closeConnection();
    return 0;
}

int start(const QString &path)
{
    const std::atomic<bool> stop{false};
    DeletionReport report;
    {
        const IndexConnection index(path);
        if (!index.isOpen()) {
            return 1;
        }
        report = RecordDeletion::finishBegun(index.database(), stop);
    }
    answer(report, sweepStore(path, stop));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    const QString command = arguments.value(0);
    if (command == QLatin1String("delete") && arguments.size() > 3) {
        return deleteRecords(arguments.mid(1));
    }
    if (command == QLatin1String("start") && arguments.size() == 2) {
        return start(arguments.at(1));
    }
    std::fputs("delete INDEX TABLE KEY... | start INDEX\n", stderr);
    return 2;
}
