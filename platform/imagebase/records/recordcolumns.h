#pragma once

#include "attributes.h"
#include "imagebase_export.h"

#include <QStringList>

// The columns of the record tables in their order, each name once: properties, enumerators and name lists are
// made of these. A test holds them against the schema.

#define PM_PATIENT_COLUMNS(X)                                                                                \
    X(pk)                                                                                                    \
    X(PatientName)                                                                                           \
    X(PatientID)                                                                                             \
    X(IssuerOfPatientID)                                                                                     \
    X(PatientBirthDate)                                                                                      \
    X(PatientBirthTime)                                                                                      \
    X(PatientSex)                                                                                            \
    X(OtherPatientIDs)                                                                                       \
    X(EthnicGroup)                                                                                           \
    X(PatientSpeciesDescription)                                                                             \
    X(PatientComments)                                                                                       \
    X(Status)                                                                                                \
    X(updated_time)                                                                                          \
    X(NumberOfPatientRelatedStudies)                                                                         \
    X(NumberOfPatientRelatedSeries)                                                                          \
    X(NumberOfPatientRelatedInstances)

#define PM_STUDY_COLUMNS(X)                                                                                  \
    X(pk)                                                                                                    \
    X(patient_fk)                                                                                            \
    X(StudyInstanceUID)                                                                                      \
    X(StudyID)                                                                                               \
    X(StudyDate)                                                                                             \
    X(StudyTime)                                                                                             \
    X(AccessionNumber)                                                                                       \
    X(StudyDescription)                                                                                      \
    X(ReferringPhysicianName)                                                                                \
    X(PatientAge)                                                                                            \
    X(PatientSize)                                                                                           \
    X(PatientWeight)                                                                                         \
    X(InstitutionName)                                                                                       \
    X(InstitutionalDepartmentName)                                                                           \
    X(RequestedProcedureDescription)                                                                         \
    X(ModalitiesInStudy)                                                                                     \
    X(Status)                                                                                                \
    X(NumberOfStudyRelatedSeries)                                                                            \
    X(NumberOfStudyRelatedInstances)

#define PM_SERIES_COLUMNS(X)                                                                                 \
    X(pk)                                                                                                    \
    X(study_fk)                                                                                              \
    X(SeriesInstanceUID)                                                                                     \
    X(Modality)                                                                                              \
    X(SeriesDescription)                                                                                     \
    X(SeriesNumber)                                                                                          \
    X(SeriesDate)                                                                                            \
    X(SeriesTime)                                                                                            \
    X(BodyPartExamined)                                                                                      \
    X(PatientPosition)                                                                                       \
    X(Laterality)                                                                                            \
    X(ProtocolName)                                                                                          \
    X(PerformingPhysicianName)                                                                               \
    X(OperatorsName)                                                                                         \
    X(Manufacturer)                                                                                          \
    X(ManufacturerModelName)                                                                                 \
    X(StationName)                                                                                           \
    X(DeviceSerialNumber)                                                                                    \
    X(SoftwareVersions)                                                                                      \
    X(FrameOfReferenceUID)                                                                                   \
    X(Status)                                                                                                \
    X(NumberOfSeriesRelatedInstances)

#define PM_INSTANCE_COLUMNS(X)                                                                               \
    X(pk)                                                                                                    \
    X(series_fk)                                                                                             \
    X(SOPInstanceUID)                                                                                        \
    X(InstanceNumber)                                                                                        \
    X(SOPClassUID)                                                                                           \
    X(ImageType)                                                                                             \
    X(AcquisitionNumber)                                                                                     \
    X(AcquisitionDate)                                                                                       \
    X(AcquisitionTime)                                                                                       \
    X(ContentDate)                                                                                           \
    X(ContentTime)                                                                                           \
    X(Rows)                                                                                                  \
    X(Columns)                                                                                               \
    X(NumberOfFrames)                                                                                        \
    X(SamplesPerPixel)                                                                                       \
    X(PhotometricInterpretation)                                                                             \
    X(BitsAllocated)                                                                                         \
    X(BitsStored)                                                                                            \
    X(HighBit)                                                                                               \
    X(PixelRepresentation)                                                                                   \
    X(PixelSpacing)                                                                                          \
    X(ImagePositionPatient)                                                                                  \
    X(ImageOrientationPatient)                                                                               \
    X(SliceLocation)                                                                                         \
    X(SliceThickness)                                                                                        \
    X(SpacingBetweenSlices)                                                                                  \
    X(WindowCenter)                                                                                          \
    X(WindowWidth)                                                                                           \
    X(RescaleIntercept)                                                                                      \
    X(RescaleSlope)                                                                                          \
    X(TransferSyntaxUID)                                                                                     \
    X(IrradiationEventUID)                                                                                   \
    X(FilePath)                                                                                              \
    X(SourcePath)                                                                                            \
    X(FileSize)                                                                                              \
    X(FileTime)                                                                                              \
    X(FileInode)

/// An enumerator of a record class's Column.
#define PM_RECORD_COLUMN(name) name,

/// A Qt property of a record class for one column: invalid where the value was not read or is absent.
#define PM_RECORD_PROPERTY(name)                                                                             \
    Q_PROPERTY(QVariant name READ read_##name)                                                               \
    QVariant read_##name() const                                                                             \
    {                                                                                                        \
        return value(int(Column::name));                                                                     \
    }

/// The columns of a level's table in their order.
IMAGEBASE_EXPORT const QStringList &recordColumns(RecordLevel level);
