#include "exportlist.h"

#include "exportlayout.h"
#include "personname.h"
#include "recordsql.h"

#include <QFileInfo>
#include <QSqlQuery>
#include <QVariant>

namespace {

/// From the keys down to the images; the tables by the names that recordTableName() has.
QString fromChosen(RecordLevel level)
{
    return QStringLiteral("FROM json_each(?) AS chosen JOIN patient "
                          "JOIN generalstudy ON generalstudy.patient_fk = patient.pk "
                          "JOIN generalseries ON generalseries.study_fk = generalstudy.pk "
                          "JOIN imageformat AS image ON image.series_fk = generalseries.pk "
                          "WHERE %1.pk = chosen.value AND image.FilePath <> ''")
        .arg(level == RecordLevel::Image ? QStringLiteral("image")
                                         : QString::fromLatin1(recordTableName(level)));
}

QString listStatement(RecordLevel level)
{
    return QStringLiteral("SELECT patient.pk, generalstudy.pk, generalseries.pk, PatientName, PatientID, "
                          "StudyDate, StudyDescription, ModalitiesInStudy, SeriesNumber, Modality, "
                          "SeriesDescription, InstanceNumber, FilePath ")
        + fromChosen(level)
        + QStringLiteral(" ORDER BY patient.pk, StudyDate, generalstudy.pk, SeriesNumber IS NULL, "
                         "SeriesNumber, generalseries.pk, ")
        + QLatin1String(RecordSql::imageOrder);
}

ExportRow rowOf(const QSqlQuery &query)
{
    int column = 0;
    ExportRow row;
    row.patient = query.value(column++).toLongLong();
    row.study = query.value(column++).toLongLong();
    row.series = query.value(column++).toLongLong();
    row.patientName = personNameForDisplay(query.value(column++).toString());
    for (QString *text : {&row.patientId, &row.studyDate, &row.studyDescription, &row.modalities,
             &row.seriesNumber, &row.modality, &row.seriesDescription, &row.instanceNumber, &row.filePath}) {
        *text = query.value(column++).toString();
    }
    return row;
}

} // namespace

QVector<ExportItem> listExport(
    const QSqlDatabase &db, const ExportRequest &request, const std::atomic<bool> &stop, QSqlError *error)
{
    QVector<ExportItem> items;
    const std::unique_ptr<ExportLayout> layout = ExportLayout::make(request);
    QSqlQuery query(db);
    query.setForwardOnly(true);
    query.prepare(listStatement(request.level));
    query.addBindValue(RecordSql::keyList(request.keys));
    if (!query.exec()) {
        *error = query.lastError();
        return items;
    }
    while (!stop && query.next()) {
        const ExportRow row = rowOf(query);
        // The system would take a path with a zero byte for a shorter one, and Qt for an error of ours.
        const bool isPath = !row.filePath.contains(QChar::Null);
        items.append({row.filePath, layout->nameFor(row), isPath ? QFileInfo(row.filePath).size() : 0});
    }
    if (query.lastError().isValid()) {
        *error = query.lastError();
    }
    return items;
}

std::optional<ExportSize> exportSize(const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys)
{
    QSqlQuery query(db);
    query.prepare(QStringLiteral("SELECT count(*), total(FileSize) ") + fromChosen(level));
    query.addBindValue(RecordSql::keyList(keys));
    if (!query.exec() || !query.next()) {
        return std::nullopt;
    }
    return ExportSize{query.value(0).toLongLong(), qint64(query.value(1).toDouble())};
}
