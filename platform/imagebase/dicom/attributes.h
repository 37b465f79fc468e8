#pragma once

#include "imagebase_export.h"

#include <QString>

#include <array>
#include <cstddef>
#include <optional>

/// The four levels of the index, from the top; also the four record tables.
enum class RecordLevel : quint8 { Patient, Study, Series, Image };

/// Name of the record table of a level: "patient", "generalstudy", "generalseries", "imageformat".
IMAGEBASE_EXPORT const char *recordTableName(RecordLevel level);
/// The level of a record table; nothing for any other name.
IMAGEBASE_EXPORT std::optional<RecordLevel> recordLevelOf(const QString &tableName);

/// The column that names the parent of a record of this level ("patient_fk" of a study); null for a patient.
IMAGEBASE_EXPORT const char *recordParentColumn(RecordLevel level);

/// How the value of an attribute enters the index.
enum class ValueKind : quint8 {
    Text, ///< decoded by the Specific Character Set
    Code, ///< the default repertoire: UIDs, codes, dates, times; several values stay joined by a backslash
    Number ///< the first value, as a number; absent where it is none
};

/// The attributes that the index keeps, each a column named by its DICOM keyword.
enum class Attribute : quint8 {
    // patient
    PatientName,
    PatientID,
    IssuerOfPatientID,
    PatientBirthDate,
    PatientBirthTime,
    PatientSex,
    OtherPatientIDs,
    EthnicGroup,
    PatientSpeciesDescription,
    PatientComments,
    // generalstudy
    StudyInstanceUID,
    StudyID,
    StudyDate,
    StudyTime,
    AccessionNumber,
    StudyDescription,
    ReferringPhysicianName,
    PatientAge,
    PatientSize,
    PatientWeight,
    InstitutionName,
    InstitutionalDepartmentName,
    RequestedProcedureDescription,
    // generalseries
    SeriesInstanceUID,
    Modality,
    SeriesDescription,
    SeriesNumber,
    SeriesDate,
    SeriesTime,
    BodyPartExamined,
    PatientPosition,
    Laterality,
    ProtocolName,
    PerformingPhysicianName,
    OperatorsName,
    Manufacturer,
    ManufacturerModelName,
    StationName,
    DeviceSerialNumber,
    SoftwareVersions,
    FrameOfReferenceUID,
    // imageformat
    SOPInstanceUID,
    InstanceNumber,
    SOPClassUID,
    ImageType,
    AcquisitionNumber,
    AcquisitionDate,
    AcquisitionTime,
    ContentDate,
    ContentTime,
    Rows,
    Columns,
    NumberOfFrames,
    SamplesPerPixel,
    PhotometricInterpretation,
    BitsAllocated,
    BitsStored,
    HighBit,
    PixelRepresentation,
    PixelSpacing,
    ImagePositionPatient,
    ImageOrientationPatient,
    SliceLocation,
    SliceThickness,
    SpacingBetweenSlices,
    WindowCenter,
    WindowWidth,
    RescaleIntercept,
    RescaleSlope,
    TransferSyntaxUID,
    IrradiationEventUID,
    Count
};

inline constexpr std::size_t attributeCount = static_cast<std::size_t>(Attribute::Count);

struct AttributeInfo
{
    Attribute attribute;
    quint32 tag; ///< group in the high 16 bits
    const char *keyword;
    RecordLevel level;
    ValueKind kind;
};

/// One entry for each attribute, in the order of the enumeration.
IMAGEBASE_EXPORT const std::array<AttributeInfo, attributeCount> &attributeTable();
