#include "attributes.h"

namespace {

using A = Attribute;
using L = RecordLevel;
using K = ValueKind;

constexpr std::array<AttributeInfo, attributeCount> table{{
    {A::PatientName, 0x00100010, "PatientName", L::Patient, K::Text},
    {A::PatientID, 0x00100020, "PatientID", L::Patient, K::Text},
    {A::IssuerOfPatientID, 0x00100021, "IssuerOfPatientID", L::Patient, K::Text},
    {A::PatientBirthDate, 0x00100030, "PatientBirthDate", L::Patient, K::Code},
    {A::PatientBirthTime, 0x00100032, "PatientBirthTime", L::Patient, K::Code},
    {A::PatientSex, 0x00100040, "PatientSex", L::Patient, K::Code},
    {A::OtherPatientIDs, 0x00101000, "OtherPatientIDs", L::Patient, K::Text},
    {A::EthnicGroup, 0x00102160, "EthnicGroup", L::Patient, K::Text},
    {A::PatientSpeciesDescription, 0x00102201, "PatientSpeciesDescription", L::Patient, K::Text},
    {A::PatientComments, 0x00104000, "PatientComments", L::Patient, K::Text},

    {A::StudyInstanceUID, 0x0020000d, "StudyInstanceUID", L::Study, K::Code},
    {A::StudyID, 0x00200010, "StudyID", L::Study, K::Text},
    {A::StudyDate, 0x00080020, "StudyDate", L::Study, K::Code},
    {A::StudyTime, 0x00080030, "StudyTime", L::Study, K::Code},
    {A::AccessionNumber, 0x00080050, "AccessionNumber", L::Study, K::Text},
    {A::StudyDescription, 0x00081030, "StudyDescription", L::Study, K::Text},
    {A::ReferringPhysicianName, 0x00080090, "ReferringPhysicianName", L::Study, K::Text},
    {A::PatientAge, 0x00101010, "PatientAge", L::Study, K::Code},
    {A::PatientSize, 0x00101020, "PatientSize", L::Study, K::Number},
    {A::PatientWeight, 0x00101030, "PatientWeight", L::Study, K::Number},
    {A::InstitutionName, 0x00080080, "InstitutionName", L::Study, K::Text},
    {A::InstitutionalDepartmentName, 0x00081040, "InstitutionalDepartmentName", L::Study, K::Text},
    {A::RequestedProcedureDescription, 0x00321060, "RequestedProcedureDescription", L::Study, K::Text},

    {A::SeriesInstanceUID, 0x0020000e, "SeriesInstanceUID", L::Series, K::Code},
    {A::Modality, 0x00080060, "Modality", L::Series, K::Code},
    {A::SeriesDescription, 0x0008103e, "SeriesDescription", L::Series, K::Text},
    {A::SeriesNumber, 0x00200011, "SeriesNumber", L::Series, K::Number},
    {A::SeriesDate, 0x00080021, "SeriesDate", L::Series, K::Code},
    {A::SeriesTime, 0x00080031, "SeriesTime", L::Series, K::Code},
    {A::BodyPartExamined, 0x00180015, "BodyPartExamined", L::Series, K::Code},
    {A::PatientPosition, 0x00185100, "PatientPosition", L::Series, K::Code},
    {A::Laterality, 0x00200060, "Laterality", L::Series, K::Code},
    {A::ProtocolName, 0x00181030, "ProtocolName", L::Series, K::Text},
    {A::PerformingPhysicianName, 0x00081050, "PerformingPhysicianName", L::Series, K::Text},
    {A::OperatorsName, 0x00081070, "OperatorsName", L::Series, K::Text},
    {A::Manufacturer, 0x00080070, "Manufacturer", L::Series, K::Text},
    {A::ManufacturerModelName, 0x00081090, "ManufacturerModelName", L::Series, K::Text},
    {A::StationName, 0x00081010, "StationName", L::Series, K::Text},
    {A::DeviceSerialNumber, 0x00181000, "DeviceSerialNumber", L::Series, K::Text},
    {A::SoftwareVersions, 0x00181020, "SoftwareVersions", L::Series, K::Text},
    {A::FrameOfReferenceUID, 0x00200052, "FrameOfReferenceUID", L::Series, K::Code},

    {A::SOPInstanceUID, 0x00080018, "SOPInstanceUID", L::Image, K::Code},
    {A::InstanceNumber, 0x00200013, "InstanceNumber", L::Image, K::Number},
    {A::SOPClassUID, 0x00080016, "SOPClassUID", L::Image, K::Code},
    {A::ImageType, 0x00080008, "ImageType", L::Image, K::Code},
    {A::AcquisitionNumber, 0x00200012, "AcquisitionNumber", L::Image, K::Number},
    {A::AcquisitionDate, 0x00080022, "AcquisitionDate", L::Image, K::Code},
    {A::AcquisitionTime, 0x00080032, "AcquisitionTime", L::Image, K::Code},
    {A::ContentDate, 0x00080023, "ContentDate", L::Image, K::Code},
    {A::ContentTime, 0x00080033, "ContentTime", L::Image, K::Code},
    {A::Rows, 0x00280010, "Rows", L::Image, K::Number},
    {A::Columns, 0x00280011, "Columns", L::Image, K::Number},
    {A::NumberOfFrames, 0x00280008, "NumberOfFrames", L::Image, K::Number},
    {A::SamplesPerPixel, 0x00280002, "SamplesPerPixel", L::Image, K::Number},
    {A::PhotometricInterpretation, 0x00280004, "PhotometricInterpretation", L::Image, K::Code},
    {A::BitsAllocated, 0x00280100, "BitsAllocated", L::Image, K::Number},
    {A::BitsStored, 0x00280101, "BitsStored", L::Image, K::Number},
    {A::HighBit, 0x00280102, "HighBit", L::Image, K::Number},
    {A::PixelRepresentation, 0x00280103, "PixelRepresentation", L::Image, K::Number},
    {A::PixelSpacing, 0x00280030, "PixelSpacing", L::Image, K::Code},
    {A::ImagePositionPatient, 0x00200032, "ImagePositionPatient", L::Image, K::Code},
    {A::ImageOrientationPatient, 0x00200037, "ImageOrientationPatient", L::Image, K::Code},
    {A::SliceLocation, 0x00201041, "SliceLocation", L::Image, K::Number},
    {A::SliceThickness, 0x00180050, "SliceThickness", L::Image, K::Number},
    {A::SpacingBetweenSlices, 0x00180088, "SpacingBetweenSlices", L::Image, K::Number},
    {A::WindowCenter, 0x00281050, "WindowCenter", L::Image, K::Number},
    {A::WindowWidth, 0x00281051, "WindowWidth", L::Image, K::Number},
    {A::RescaleIntercept, 0x00281052, "RescaleIntercept", L::Image, K::Number},
    {A::RescaleSlope, 0x00281053, "RescaleSlope", L::Image, K::Number},
    {A::TransferSyntaxUID, 0x00020010, "TransferSyntaxUID", L::Image, K::Code},
    {A::IrradiationEventUID, 0x00083010, "IrradiationEventUID", L::Image, K::Code},
}};

constexpr bool inEnumerationOrder()
{
    for (std::size_t i = 0; i < table.size(); ++i) {
        if (static_cast<std::size_t>(table[i].attribute) != i) {
            return false;
        }
    }
    return true;
}
static_assert(inEnumerationOrder(), "the table follows the enumeration");

} // namespace

const char *recordTableName(RecordLevel level)
{
    switch (level) {
    case RecordLevel::Patient:
        return "patient";
    case RecordLevel::Study:
        return "generalstudy";
    case RecordLevel::Series:
        return "generalseries";
    case RecordLevel::Image:
        return "imageformat";
    }
    return "";
}

std::optional<RecordLevel> recordLevelOf(const QString &tableName)
{
    for (const RecordLevel level : {L::Patient, L::Study, L::Series, L::Image}) {
        if (tableName == QLatin1String(recordTableName(level))) {
            return level;
        }
    }
    return std::nullopt;
}

const char *recordParentColumn(RecordLevel level)
{
    switch (level) {
    case RecordLevel::Patient:
        break;
    case RecordLevel::Study:
        return "patient_fk";
    case RecordLevel::Series:
        return "study_fk";
    case RecordLevel::Image:
        return "series_fk";
    }
    return nullptr;
}

const std::array<AttributeInfo, attributeCount> &attributeTable()
{
    return table;
}
