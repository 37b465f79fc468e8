// bench_send STORE PORT ASSOCIATIONS FOLDER: sends all files below the folder to a peer on this computer, as
// the workstation does, and ends with one line of JSON: the seconds from the request to the last answer.
#include "sendservice.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QElapsedTimer>

#include <cstdio>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5) {
        return 2;
    }
    QStringList paths;
    QDirIterator walk(arguments[4], QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        paths.append(walk.next());
    }
    SendOptions options;
    options.associationsPerNode = arguments[3].toInt();
    SendService service(arguments[1], options);
    QElapsedTimer clock;
    clock.start();
    const DicomNode peer{QStringLiteral("BENCH"), QStringLiteral("127.0.0.1"), arguments[2].toInt()};
    const qint64 job = service.enqueue(paths, peer, SendSource::Dialog);
    QObject::connect(&service, &SendService::changed, &service, [&] {
        const SendJob now = service.job(job);
        if (now.isOver()) {
            std::printf("{\"seconds\": %.3f, \"accepted\": %lld}\n", double(clock.elapsed()) / 1000,
                static_cast<long long>(now.accepted));
            QCoreApplication::exit(now.accepted == paths.size() ? 0 : 1);
        }
    });
    return QCoreApplication::exec();
}
