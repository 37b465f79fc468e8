// The process that the fault runs kill while it downloads:
//   downloadprocess INDEX ADDRESS LIST
// LIST names a study, a series and its number of objects in each line. Goes on with the downloads that the
// index has; ends when all of the list is in it.
#include "createconnection.h"
#include "downloadengine.h"
#include "httpuploadfile.h"

#include <QCoreApplication>
#include <QFile>
#include <QTimer>

#include <algorithm>

namespace {

QVector<DownloadStudy> studiesOf(const QString &list)
{
    QVector<DownloadStudy> studies;
    QFile file(list);
    file.open(QIODevice::ReadOnly);
    while (!file.atEnd()) {
        const QStringList parts = QString::fromLatin1(file.readLine()).split(QLatin1Char(' '));
        if (studies.isEmpty() || studies.last().studyUid != parts[0]) {
            studies.append({parts[0], parts[0], {}});
        }
        studies.last().series.append({parts[1], parts[2].toInt()});
    }
    return studies;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4) {
        return 2;
    }
    setDatabasePath(arguments[1]);
    if (!createConnection()) {
        return 1;
    }
    CloudSession session;
    session.service.address = QUrl(arguments[2]);
    session.id = CloudSession::opaqueId();
    HttpUploadFile::instance()->setSession(session);
    DownloadEngine *engine = DownloadEngine::current();
    QObject::connect(engine, &DownloadEngine::changed, engine, [engine] {
        const QVector<DownloadTally> &tallies = engine->tallies();
        const bool isDone = !tallies.isEmpty()
            && std::all_of(tallies.begin(), tallies.end(),
                [](const DownloadTally &tally) { return tally.state == DownloadState::Finished; });
        if (isDone) {
            QCoreApplication::quit();
        }
    });
    for (const DownloadStudy &study : studiesOf(arguments[3])) {
        engine->add(study);
    }
    const int result = QCoreApplication::exec();
    DownloadEngine::release();
    return result;
}
