#include "uploadselection.h"

#include "filequeries.h"

#include <QVariant>

namespace {

using namespace FileQueries;

/// The last row's, where there are several.
QString nameOf(RecordLevel level, qlonglong key)
{
    QString name;
    for (QSqlQuery row = rows(patientNameOf(level), key); row.next();) {
        name = row.value(0).toString();
    }
    return name;
}

void addFiles(RecordLevel level, qlonglong key, UploadBatch *batch)
{
    for (QSqlQuery row = rows(ofUpload(level), key); row.next();) {
        batch->filePaths.append(row.value(UploadFilePath).toString());
        batch->sopInstanceUIDs.append(row.value(UploadInstance).toString());
        batch->seriesUIDs.append(row.value(UploadSeries).toString());
    }
}

QVector<UploadBatch> ofPatients(const QList<qlonglong> &keys)
{
    QVector<UploadBatch> batches;
    for (const qlonglong key : keys) {
        UploadBatch batch;
        addFiles(RecordLevel::Patient, key, &batch);
        batch.patientName = nameOf(RecordLevel::Patient, key);
        batches.append(batch);
    }
    return batches;
}

/// Studies or series.
UploadBatch ofBranches(RecordLevel level, const QList<qlonglong> &keys)
{
    UploadBatch batch;
    for (const qlonglong key : keys) {
        addFiles(level, key, &batch);
    }
    batch.patientName = nameOf(level, keys.constFirst());
    return batch;
}

/// The UIDs are the first image's alone: whoever sends the files asks each for its own.
UploadBatch ofImages(const QList<qlonglong> &keys)
{
    UploadBatch batch;
    for (const qlonglong key : keys) {
        for (QSqlQuery row = rows(ofUpload(RecordLevel::Image), key); row.next();) {
            batch.filePaths.append(row.value(UploadFilePath).toString());
        }
    }
    for (QSqlQuery row = rows(identityOfImage(), keys.constFirst()); row.next();) {
        batch.patientName = row.value(IdentityName).toString();
        batch.sopInstanceUIDs.append(row.value(IdentityInstance).toString());
        batch.seriesUIDs.append(row.value(IdentitySeries).toString());
    }
    return batch;
}

} // namespace

QVector<UploadBatch> UploadSelection::read(RecordLevel level, const QList<qlonglong> &keys)
{
    if (keys.isEmpty()) {
        return {};
    }
    switch (level) {
    case RecordLevel::Patient:
        return ofPatients(keys);
    case RecordLevel::Study:
    case RecordLevel::Series:
        return {ofBranches(level, keys)};
    case RecordLevel::Image:
        return {ofImages(keys)};
    }
    return {};
}
