// The process that the fault runs kill while it uploads:
//   uploadprocess INDEX ADDRESS
// Goes on with the uploads that the index has, or else uploads all its images; ends when all is stored. Says
// so when it is held up.
#include "cloudclientasynchandler.h"
#include "createconnection.h"
#include "httpuploadfile.h"
#include "qdcmrecvfile.h"
#include "uploadtask.h"

#include <QCoreApplication>
#include <QSqlQuery>
#include <QVariant>

#include <cstdio>

namespace {

UpLoadTask *uploadAll(CloudClientAsyncHandler &handler)
{
    QStringList series;
    QStringList instances;
    QStringList files;
    QSqlQuery query(QStringLiteral("SELECT SeriesInstanceUID, SOPInstanceUID, FilePath FROM imageformat "
                                   "JOIN generalseries ON generalseries.pk = imageformat.series_fk"));
    while (query.next()) {
        series.append(query.value(0).toString());
        instances.append(query.value(1).toString());
        files.append(query.value(2).toString());
    }
    QDcmRecvFile().onNotifyWriteDB(series, instances, files, {});
    return handler.newUpLoadTask(series, instances, files, {});
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
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
    const std::shared_ptr<CloudClientAsyncHandler> handler =
        HttpUploadFile::instance()->newClientAsyncHandler();
    QVector<UpLoadTask *> tasks = handler->unfinished({});
    if (tasks.isEmpty()) {
        tasks.append(uploadAll(*handler));
    }
    QObject::connect(tasks[0], &UpLoadTask::finshTask, &QCoreApplication::quit);
    QObject::connect(tasks[0], &UpLoadTask::changed, [](const UpLoadTask *task) {
        if (task->tally().state == UploadTally::State::Paused) {
            std::puts("held up");
            std::fflush(stdout);
        }
    });
    const int result = QCoreApplication::exec();
    qDeleteAll(tasks);
    return result;
}
