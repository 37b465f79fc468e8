#include "recordfiles.h"

#include "recordsql.h"

#include <QSqlQuery>
#include <QVariant>

namespace {

QString statement(RecordLevel level)
{
    // The keys come first, so that the other tables are looked up from them.
    return QStringLiteral(
        "SELECT image.FilePath, patient.PatientID, study.StudyInstanceUID, series.SeriesInstanceUID "
        "FROM json_each(?) AS chosen "
        "JOIN patient JOIN generalstudy AS study ON study.patient_fk = patient.pk "
        "JOIN generalseries AS series ON series.study_fk = study.pk "
        "JOIN imageformat AS image ON image.series_fk = series.pk "
        "WHERE %1.pk = chosen.value AND image.FilePath <> '' "
        "ORDER BY patient.pk, study.StudyDate DESC, study.StudyTime DESC, study.pk, "
        "series.SeriesNumber IS NULL, series.SeriesNumber, series.pk, %2")
        .arg(level == RecordLevel::Patient     ? QLatin1String("patient")
                : level == RecordLevel::Study  ? QLatin1String("study")
                : level == RecordLevel::Series ? QLatin1String("series")
                                               : QLatin1String("image"),
            QLatin1String(RecordSql::imageOrder));
}

} // namespace

RecordFiles recordFiles(
    const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys, const std::atomic<bool> *stop)
{
    RecordFiles files;
    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (!query.prepare(statement(level))) {
        return files;
    }
    query.addBindValue(RecordSql::keyList(keys));
    query.exec();
    while (!(stop && *stop) && query.next()) {
        if (files.paths.isEmpty()) {
            files.patientId = query.value(1).toString();
            files.studyUid = query.value(2).toString();
            files.seriesUid = query.value(3).toString();
        }
        files.paths.append(query.value(0).toString());
    }
    return files;
}
