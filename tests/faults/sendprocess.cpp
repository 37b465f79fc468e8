// Asks for a send in the file of the jobs, for whoever opens it next:
//   sendprocess STORE PORT FILE...
#include "sendstore.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.size() < 3) {
        return 2;
    }
    SendJob job;
    job.id = 1;
    job.node = {QStringLiteral("FAULTS"), QStringLiteral("127.0.0.1"), arguments[1].toInt()};
    job.created = QDateTime::currentDateTime();
    SendStore store(arguments[0]);
    return store.isOpen() && store.addJob(job, arguments.mid(2)) ? 0 : 1;
}
