#include "qdcmrecvfile.h"

#include "createconnection.h"
#include "indexconnection.h"
#include "transfertables.h"

#include <QSqlQuery>
#include <QVariant>

namespace {

void enterSeries(const QStringList &seriesUIDs)
{
    const IndexConnection connection(databasePath());
    if (!connection.isOpen()) {
        return;
    }
    const QSqlDatabase db = connection.database();
    WriteTransaction transaction(db);
    if (!transaction.isActive()) {
        return;
    }
    TransferTables tables(db);
    for (const QString &uid : seriesUIDs) {
        if (!tables.enter(uid)) {
            return;
        }
    }
    transaction.commit();
}

} // namespace

QDcmRecvFile::QDcmRecvFile(QObject *parent)
    : QObject(parent)
{ }

bool QDcmRecvFile::needtoWriteDB(const QStringList &seriesUIDs) const
{
    // Asked on the GUI thread: a locked index may not hold the screen.
    constexpr int waitMs = 100;
    const IndexConnection connection(databasePath(), waitMs);
    if (!connection.isOpen()) {
        return false;
    }
    QSqlQuery query(connection.database());
    query.prepare(QStringLiteral("SELECT 1 FROM generalseries WHERE SeriesInstanceUID = ? LIMIT 1"));
    for (const QString &uid : seriesUIDs) {
        query.bindValue(0, uid);
        if (query.exec() && query.next()) {
            return true;
        }
        query.finish();
    }
    return false;
}

void QDcmRecvFile::onNotifyWriteDB(
    QStringList seriesUIDs, QStringList sopInstanceUIDs, QStringList filePaths, QString patientName)
{
    QStringList distinct = seriesUIDs;
    distinct.removeDuplicates();
    enterSeries(distinct);
    emit notifyUploadFile(seriesUIDs, sopInstanceUIDs, filePaths, patientName);
}
