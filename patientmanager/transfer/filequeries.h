#pragma once

#include "attributes.h"
#include "patientmanager_export.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>

/**
 * The queries for the files of selected records, which export, send, deletion and upload share: each text
 * ends with "pk=" and is run once a key, by rows() or with the key put behind it by withKey().
 *
 * A level that an operation has no query for gives an empty text. Which value stands in which column is said
 * at each query.
 */
namespace FileQueries {

/// For a copy of the files: FilePath. Of a series and of an image.
PATIENTMANAGER_EXPORT QString ofExport(RecordLevel level);

/// For a send: FilePath, PatientName, Modality of the series. Of a patient, a study and a series.
PATIENTMANAGER_EXPORT QString ofSend(RecordLevel level);
enum SendColumn { SendFilePath, SendPatientName, SendModality };

/// For a deletion: FilePath, IrradiationEventUID (the marker of a copy) and, but for an image,
/// SOPInstanceUID and SeriesInstanceUID. Of every level.
PATIENTMANAGER_EXPORT QString ofDeletion(RecordLevel level);
enum DeletionColumn { DeletionFilePath, DeletionMarker };
/// PatientName of an image: what a deletion of images gives to the clean-up in the place of a file query.
PATIENTMANAGER_EXPORT QString nameOfImagesPatient();

/// For an upload: FilePath, SOPInstanceUID, SeriesInstanceUID of a patient, a study and a series; of an image
/// FilePath alone.
PATIENTMANAGER_EXPORT QString ofUpload(RecordLevel level);

/// Of an image: PatientName, SOPInstanceUID, SeriesInstanceUID.
PATIENTMANAGER_EXPORT QString identityOfImage();
enum IdentityColumn { IdentityName, IdentityInstance, IdentitySeries };
enum UploadColumn { UploadFilePath, UploadInstance, UploadSeries };
/// PatientName of the patient that a record belongs to. Of a patient, a study and a series.
PATIENTMANAGER_EXPORT QString patientNameOf(RecordLevel level);

/// The query of one record: the key follows in quotes.
PATIENTMANAGER_EXPORT QString withKey(const QString &query, qlonglong key);
/// The query of one record, executed: before its first row. A query that fails has no row.
PATIENTMANAGER_EXPORT QSqlQuery rows(
    const QString &query, qlonglong key, const QSqlDatabase &db = QSqlDatabase::database());

} // namespace FileQueries
