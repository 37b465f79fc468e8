// bench_upload INDEX ADDRESS USER PASSWORD: uploads all images of an index to a DICOMweb service, as the
// workstation does, and ends with one line of JSON: the seconds from the request to the last acknowledgement
// in the index, and the most memory beyond what was in use before.
#include "cloudclientasynchandler.h"
#include "createconnection.h"
#include "httpuploadfile.h"
#include "processmemory.h"
#include "qdcmrecvfile.h"
#include "uploadtask.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSqlQuery>
#include <QVariant>

#include <cstdio>

namespace {

struct Images
{
    QStringList series;
    QStringList instances;
    QStringList files;
};

Images allImages()
{
    Images images;
    QSqlQuery query(QStringLiteral(
        "SELECT SeriesInstanceUID, SOPInstanceUID, FilePath FROM imageformat JOIN generalseries "
        "ON generalseries.pk = imageformat.series_fk ORDER BY imageformat.pk"));
    while (query.next()) {
        images.series.append(query.value(0).toString());
        images.instances.append(query.value(1).toString());
        images.files.append(query.value(2).toString());
    }
    return images;
}

void signIn(const QStringList &arguments)
{
    CloudSession session;
    session.service.address = QUrl(arguments[2]);
    session.service.authorization = WebService::basic(arguments[3], arguments[4]);
    session.id = CloudSession::opaqueId();
    HttpUploadFile::instance()->setSession(session);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5) {
        return 2;
    }
    setDatabasePath(arguments[1]);
    if (!createConnection()) {
        return 1;
    }
    signIn(arguments);
    const Images images = allImages();
    QDcmRecvFile writer;
    const qint64 idle = ProcessMemory::residentKib();
    QElapsedTimer clock;
    clock.start();
    writer.onNotifyWriteDB(images.series, images.instances, images.files, {});
    const std::unique_ptr<UpLoadTask> task(HttpUploadFile::instance()->newClientAsyncHandler()->newUpLoadTask(
        images.series, images.instances, images.files, {}));
    const auto end = [&] {
        const bool isGood = task->tally().succeeded == images.files.size();
        std::printf("{\"seconds\": %.3f, \"files\": %d, \"memory\": %lld}\n", double(clock.elapsed()) / 1000,
            task->tally().succeeded, static_cast<long long>(ProcessMemory::peakResidentKib() - idle));
        QCoreApplication::exit(isGood ? 0 : 1);
    };
    QObject::connect(task.get(), &UpLoadTask::finshUpLoad, task.get(), end);
    const int result = QCoreApplication::exec();
    HttpUploadFile::instance()->releaseIndex();
    return result;
}
