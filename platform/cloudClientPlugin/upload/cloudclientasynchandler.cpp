#include "cloudclientasynchandler.h"

#include "httpuploadfile.h"
#include "uploadengine.h"
#include "uploadtask.h"

namespace {

UploadOrder orderOf(const QStringList &filePaths, const UploadAccess &access)
{
    UploadOrder order;
    order.id = UploadOrder::newId();
    const QString asked = QString::fromUtf8(access.assistUrl);
    order.service = asked.isEmpty() ? HttpUploadFile::instance()->getAssistUrl()
                                    : CloudSession::plainAddress(QUrl(asked));
    order.files.reserve(filePaths.size());
    for (const QString &path : filePaths) {
        order.files.append({path, {}, {}, 0});
    }
    return order;
}

} // namespace

UpLoadTask *CloudClientAsyncHandler::newUpLoadTask(const QStringList &seriesUIDs,
    const QStringList &sopInstanceUIDs, const QStringList &filePaths, const UploadAccess &access)
{
    UploadOrder order = orderOf(filePaths, access);
    order.series = seriesUIDs;
    order.series.removeDuplicates();
    if (sopInstanceUIDs.size() == filePaths.size() && seriesUIDs.size() == filePaths.size()) {
        for (int file = 0; file < order.files.size(); ++file) {
            order.files[file].sopInstance = sopInstanceUIDs[file];
            order.files[file].series = seriesUIDs[file];
        }
    }
    return UploadEngine::current()->add(std::move(order));
}

UpLoadTask *CloudClientAsyncHandler::newUpLoadTask(const QStringList &filePaths, const UploadAccess &access)
{
    return UploadEngine::current()->add(orderOf(filePaths, access));
}

QVector<UpLoadTask *> CloudClientAsyncHandler::unfinished(const UploadAccess & /*access*/)
{
    return UploadEngine::current()->unfinished();
}
