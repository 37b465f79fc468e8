#include "waitinguploads.h"

#include "recordsql.h"
#include "selectionstatus.h"
#include "uploadtables.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

qint64 WaitingUploads::of(const RecordSelection &records)
{
    if (records.isEmpty()) {
        return 0;
    }
    QSqlQuery query(QSqlDatabase::database());
    query.prepare(QStringLiteral("SELECT count(DISTINCT imageformat.pk) FROM uploadfile JOIN imageformat ON "
                                 "imageformat.SOPInstanceUID = uploadfile.SOPInstanceUID "
                                 "WHERE uploadfile.State = %1 AND imageformat.pk IN (%2)")
                      .arg(QString::number(UploadTables::waitingState),
                          RecordSql::keysBelow(records.level, RecordLevel::Image)));
    query.bindValue(QStringLiteral(":keys"), RecordSql::keyList(records.keys));
    return query.exec() && query.next() ? query.value(0).toLongLong() : 0;
}
