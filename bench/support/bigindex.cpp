#include "bigindex.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace {

/// Rows of a statement from 1 to a bound number.
const QString counting =
    QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) ");

/// Names and dates are scattered over the keys, so that sorting has work to do; 7919 is prime.
const QString patients = counting
    + QStringLiteral(
        "INSERT INTO patient (PatientName, PatientID, PatientBirthDate, PatientSex, updated_time) "
        "SELECT CASE i WHEN 1 THEN 'AAFirst^Patient' ELSE "
        "printf('%s%07d^%s', substr('KMBSNWDLRTAGPHE', 1 + i % 15, 1), (i * 7919) % 10000019, "
        "substr('AnnaIvanLiliMaxxZoey', 1 + 4 * (i % 5), 4)) END, "
        "printf('ID%08d', (i * 104729) % 100000007), printf('%04d%02d%02d', 1930 + i % 80, 1 + i % 12, 1 + i "
        "% 28), "
        "CASE i % 2 WHEN 0 THEN 'F' ELSE 'M' END, "
        "datetime('2020-01-01', printf('+%d minutes', (i * 31) % 2500000)) FROM n");

const QString studies = counting
    + QStringLiteral(
        "INSERT INTO generalstudy (patient_fk, StudyInstanceUID, StudyID, StudyDate, StudyTime, "
        "AccessionNumber, "
        "StudyDescription) SELECT patient.pk, printf('1.2.840.99.1.%d.%d', patient.pk, i), printf('%d', i), "
        "printf('%04d%02d%02d', 2000 + (patient.pk + i) % 25, 1 + i % 12, 1 + i % 28), '101500', "
        "printf('A%09d', patient.pk * 10 + i), 'CT Thorax with contrast' FROM patient, n ORDER BY "
        "patient.pk, i");

/// Studies of a patient have rising keys without gaps.
const QString series = counting
    + QStringLiteral(
        "INSERT INTO generalseries (study_fk, SeriesInstanceUID, Modality, SeriesDescription, SeriesNumber, "
        "SeriesDate, BodyPartExamined) SELECT generalstudy.pk, printf('1.2.840.99.2.%d.%d', generalstudy.pk, "
        "i), "
        "'CT', printf('Thorax %d mm', i), i, StudyDate, 'CHEST' FROM generalstudy, n WHERE i <= %1 + CASE "
        "WHEN "
        "generalstudy.pk IN (SELECT min(pk) FROM generalstudy GROUP BY patient_fk) THEN %2 ELSE 0 END "
        "ORDER BY generalstudy.pk, i");

const QString images = QStringLiteral(
    "INSERT INTO imageformat (series_fk, SOPInstanceUID, InstanceNumber, SOPClassUID, ImageType, \"Rows\", "
    "\"Columns\", ContentDate, ContentTime, SliceLocation, SliceThickness, FilePath) "
    "SELECT generalseries.pk, printf('1.2.840.99.3.%d.%d', generalseries.pk, i), i, "
    "'1.2.840.10008.5.1.4.1.1.2', "
    "'ORIGINAL\\PRIMARY\\AXIAL', 512, 512, SeriesDate, '101741', i * 1.25, 1.25, "
    "printf('/data/patients/%d/%d.dcm', generalseries.pk, i) FROM generalseries, n ");

QString run(const QString &sql, int rows)
{
    QSqlQuery query;
    if (rows <= 0 || (query.prepare(sql) && (query.addBindValue(rows), query.exec()))) {
        return {};
    }
    return query.lastError().text();
}

} // namespace

QString fillBigIndex(const BigIndexSize &size)
{
    QSqlDatabase db = QSqlDatabase::database();
    const QString firstSeries = QStringLiteral("WHERE generalseries.pk = 1");
    const QString otherSeries = QStringLiteral("WHERE generalseries.pk > 1");
    db.transaction();
    const QString allSeries = series.arg(size.seriesOfStudy).arg(size.seriesMoreOfFirstStudy);
    for (const auto &[sql, rows] :
        {std::make_pair(patients, size.patients), std::make_pair(studies, size.studiesOfPatient),
            std::make_pair(allSeries, size.seriesOfStudy + size.seriesMoreOfFirstStudy),
            std::make_pair(counting + images + otherSeries, size.imagesOfSeries),
            std::make_pair(counting + images + firstSeries, size.imagesOfFirstSeries)}) {
        QString error = run(sql, rows);
        if (!error.isEmpty()) {
            db.rollback();
            return error;
        }
    }
    // The triggers touched every patient: the times go back to their scatter.
    run(QStringLiteral("UPDATE patient SET updated_time = "
                       "datetime('2020-01-01', printf('+%d minutes', (pk * 31) % 2500000)) WHERE ?"),
        1);
    return db.commit() ? QString() : db.lastError().text();
}
