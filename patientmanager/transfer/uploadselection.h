#pragma once

#include "attributes.h"
#include "patientmanager_export.h"

#include <QStringList>
#include <QVector>

/// The files of one upload, and whose they are called in its window.
struct UploadBatch
{
    QStringList seriesUIDs; ///< one for each file, but see UploadSelection::read()
    QStringList sopInstanceUIDs; ///< likewise
    QStringList filePaths;
    QString patientName; ///< as DICOM writes it
};

namespace UploadSelection {

/**
 * Reads what some records have to upload, from the default connection and in the order of the keys.
 *
 * Patients make a batch each; studies, series and images together make one, called by the patient of the
 * first. Of images the UIDs are those of the first alone, while all their files are there. Without keys there
 * is none.
 */
PATIENTMANAGER_EXPORT QVector<UploadBatch> read(RecordLevel level, const QList<qlonglong> &keys);

} // namespace UploadSelection
