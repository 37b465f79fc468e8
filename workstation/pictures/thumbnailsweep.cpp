#include "thumbnailsweep.h"

#include "indexconnection.h"
#include "thumbnailstore.h"

#include <QSqlQuery>
#include <QVariant>

void sweepThumbnails(ThumbnailStore &store, const QString &indexPath, const std::atomic<bool> &stop)
{
    const IndexConnection index(indexPath);
    if (!index.isOpen()) {
        return;
    }
    QSqlQuery query(index.database());
    query.setForwardOnly(true);
    if (!query.prepare(QStringLiteral("SELECT count(*) FROM imageformat WHERE SOPInstanceUID = ?"))) {
        return;
    }
    const auto isKnown = [&query](const QString &instanceUid) {
        query.bindValue(0, instanceUid);
        const bool isMissing = query.exec() && query.next() && query.value(0).toInt() == 0;
        query.finish();
        return !isMissing;
    };
    store.sweep(isKnown, stop);
}
