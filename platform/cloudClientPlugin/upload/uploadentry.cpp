#include "uploadentry.h"

#include "keptstatement.h"
#include "transfertables.h"
#include "uploadtables.h"

#include <QFileInfo>
#include <QSet>

namespace {

/// The image of the index that a file is; none where it is not in the index under this path.
void lookUp(KeptStatement &known, UploadOrder::File *file)
{
    if (known.exec({file->path, file->path}) && known.next()) {
        file->sopInstance = known.value(0).toString();
        file->series = known.value(1).toString();
    }
    known.finish();
}

} // namespace

UploadOrder UploadEntry::measured(UploadOrder order)
{
    for (UploadOrder::File &file : order.files) {
        file.bytes = QFileInfo(file.path).size();
    }
    return order;
}

bool UploadEntry::enter(const QSqlDatabase &db, TransferTables &tables, const UploadOrder &order)
{
    KeptStatement task(db,
        QStringLiteral("INSERT INTO uploadtask (pk, Service, PatientName, SeriesUIDs) VALUES (?, ?, ?, ?)"));
    if (!task.exec({order.id, UploadTables::present(order.service), UploadTables::present(order.patientName),
            UploadTables::present(order.series.join(UploadTables::listMark))})) {
        return false;
    }
    KeptStatement known(db,
        QStringLiteral("SELECT imageformat.SOPInstanceUID, generalseries.SeriesInstanceUID FROM imageformat "
                       "JOIN generalseries ON generalseries.pk = imageformat.series_fk WHERE FilePath = ? "
                       "AND (ifnull(SourcePath, FilePath) = ? OR IrradiationEventUID = 'copy')"));
    KeptStatement insert(db,
        QStringLiteral("INSERT INTO uploadfile (task_fk, FilePath, SOPInstanceUID, SeriesInstanceUID, Bytes) "
                       "VALUES (?, ?, ?, ?, ?)"));
    QSet<QString> entered;
    for (UploadOrder::File file : order.files) {
        if (file.sopInstance.isEmpty()) {
            lookUp(known, &file);
        }
        if (!file.series.isEmpty() && !entered.contains(file.series)) {
            entered.insert(file.series);
            if (!tables.enter(file.series)) {
                return false;
            }
        }
        if (!insert.exec(
                {order.id, UploadTables::present(file.path), file.sopInstance, file.series, file.bytes})) {
            return false;
        }
    }
    return true;
}
