#include "filequeries.h"

namespace {

/// The tables of a chain that begins at the records' own, and how they hang together.
QString chainFrom(RecordLevel level)
{
    switch (level) {
    case RecordLevel::Patient:
        return QStringLiteral("FROM patient inner join generalstudy inner join generalseries "
                              "inner join imageformat WHERE patient.pk=generalstudy.patient_fk and "
                              "generalstudy.pk=generalseries.study_fk and "
                              "generalseries.pk=imageformat.series_fk and ");
    case RecordLevel::Study:
        return QStringLiteral("FROM generalstudy inner join generalseries inner join imageformat WHERE "
                              "generalstudy.pk=generalseries.study_fk and "
                              "generalseries.pk=imageformat.series_fk and ");
    case RecordLevel::Series:
        return QStringLiteral("FROM generalseries inner join imageformat WHERE "
                              "generalseries.pk=imageformat.series_fk and ");
    case RecordLevel::Image:
        break;
    }
    return QStringLiteral("FROM imageformat WHERE ");
}

QString query(const char *columns, const QString &chain, const QString &key)
{
    return QLatin1String("SELECT ") + QLatin1String(columns) + QLatin1Char(' ') + chain + key
        + QLatin1Char('=');
}

/// The key column of a level in a chain of several tables.
QString keyOf(RecordLevel level)
{
    return QLatin1String(recordTableName(level)) + QLatin1String(".pk");
}

/// Of an image alone, where no other table takes part.
QString ofImage(const char *columns)
{
    return query(columns, chainFrom(RecordLevel::Image), QStringLiteral("pk"));
}

} // namespace

namespace FileQueries {

QString ofExport(RecordLevel level)
{
    switch (level) {
    case RecordLevel::Series:
        return query("imageformat.FilePath", chainFrom(level), keyOf(level));
    case RecordLevel::Image:
        return ofImage("FilePath");
    case RecordLevel::Patient:
    case RecordLevel::Study:
        break;
    }
    return {};
}

QString ofSend(RecordLevel level)
{
    if (level == RecordLevel::Image) {
        return {};
    }
    return query("imageformat.FilePath,PatientName,generalseries.Modality", chainFrom(RecordLevel::Patient),
        keyOf(level));
}

QString ofDeletion(RecordLevel level)
{
    if (level == RecordLevel::Image) {
        return ofImage("FilePath,IrradiationEventUID");
    }
    return query("imageformat.FilePath,imageformat.IrradiationEventUID,imageformat.SOPInstanceUID,"
                 "generalseries.SeriesInstanceUID",
        chainFrom(level), keyOf(level));
}

QString nameOfImagesPatient()
{
    return query("patient.PatientName", chainFrom(RecordLevel::Patient), keyOf(RecordLevel::Image));
}

QString ofUpload(RecordLevel level)
{
    if (level == RecordLevel::Image) {
        return ofImage("FilePath");
    }
    return query("imageformat.FilePath,imageformat.SOPInstanceUID,generalseries.SeriesInstanceUID",
        chainFrom(level), keyOf(level));
}

QString identityOfImage()
{
    return query("patient.PatientName,imageformat.SOPInstanceUID,generalseries.SeriesInstanceUID",
        chainFrom(RecordLevel::Patient), keyOf(RecordLevel::Image));
}

QString patientNameOf(RecordLevel level)
{
    switch (level) {
    case RecordLevel::Patient:
        return QStringLiteral("SELECT PatientName FROM patient WHERE pk=");
    case RecordLevel::Study:
        return query("patient.PatientName",
            QStringLiteral("FROM patient inner join generalstudy WHERE "
                           "patient.pk=generalstudy.patient_fk and "),
            keyOf(level));
    case RecordLevel::Series:
        return query("patient.PatientName",
            QStringLiteral("FROM patient inner join generalstudy inner join generalseries WHERE "
                           "patient.pk=generalstudy.patient_fk and generalstudy.pk=generalseries.study_fk "
                           "and "),
            keyOf(level));
    case RecordLevel::Image:
        break;
    }
    return {};
}

QString withKey(const QString &query, qlonglong key)
{
    return query + QLatin1Char('\'') + QString::number(key) + QLatin1Char('\'');
}

QSqlQuery rows(const QString &query, qlonglong key, const QSqlDatabase &db)
{
    QSqlQuery result(db);
    result.setForwardOnly(true);
    result.exec(withKey(query, key));
    return result;
}

} // namespace FileQueries
