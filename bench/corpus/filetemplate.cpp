#include "filetemplate.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcostrmb.h>
#include <dcmtk/dcmdata/dctk.h>

#include <cstring>

namespace {

/// What stands in the template for each field: found again by its bytes, so each is unique in the file. Even
/// lengths need no padding.
constexpr std::array<const char *, FileTemplate::FieldCount> wildTexts = {
    "TEMPLATENAME^TEMPLATEGIVEN^MIDDLENAME", "TEMPLATEID111111", "11110111",
    "1.2.826.0.1.3680043.10.511.2.1111111111", "22220222", "TEMPLATEACCESS11",
    "1.2.826.0.1.3680043.10.511.3.1111111111", "333333", "1.2.826.0.1.3680043.10.511.4.1111111111", "444444",
    "-55555.55"};

void putPatientAndStudy(DcmDataset &data)
{
    data.putAndInsertString(DCM_SpecificCharacterSet, "ISO_IR 192");
    data.putAndInsertString(DCM_PatientName, wildTexts[FileTemplate::PatientName]);
    data.putAndInsertString(DCM_PatientID, wildTexts[FileTemplate::PatientId]);
    data.putAndInsertString(DCM_PatientBirthDate, wildTexts[FileTemplate::BirthDate]);
    data.putAndInsertString(DCM_PatientSex, "F");
    data.putAndInsertString(DCM_PatientAge, "054Y");
    data.putAndInsertString(DCM_PatientWeight, "71.5");
    data.putAndInsertString(DCM_StudyInstanceUID, wildTexts[FileTemplate::StudyUid]);
    data.putAndInsertString(DCM_StudyID, "4711");
    data.putAndInsertString(DCM_StudyDate, wildTexts[FileTemplate::StudyDate]);
    data.putAndInsertString(DCM_StudyTime, "101532.000000");
    data.putAndInsertString(DCM_AccessionNumber, wildTexts[FileTemplate::Accession]);
    data.putAndInsertString(DCM_StudyDescription, "CT Thorax with contrast");
    data.putAndInsertString(DCM_ReferringPhysicianName, "Weber^Andrea^^Dr.");
    data.putAndInsertString(DCM_InstitutionName, "County Hospital, Radiology");
    data.putAndInsertString(DCM_InstitutionalDepartmentName, "CT 2");
}

void putSeries(DcmDataset &data)
{
    data.putAndInsertString(DCM_SeriesInstanceUID, wildTexts[FileTemplate::SeriesUid]);
    data.putAndInsertString(DCM_SeriesNumber, wildTexts[FileTemplate::SeriesNumber]);
    data.putAndInsertString(DCM_SeriesDate, wildTexts[FileTemplate::StudyDate]);
    data.putAndInsertString(DCM_SeriesTime, "101732.000000");
    data.putAndInsertString(DCM_SeriesDescription, "Thorax 1.0 soft tissue");
    data.putAndInsertString(DCM_Modality, "CT");
    data.putAndInsertString(DCM_BodyPartExamined, "CHEST");
    data.putAndInsertString(DCM_ProtocolName, "Thorax routine");
    data.putAndInsertString(DCM_PatientPosition, "HFS");
    data.putAndInsertString(DCM_OperatorsName, "Schmidt^K");
    data.putAndInsertString(DCM_PerformingPhysicianName, "Klein^Robert");
    data.putAndInsertString(DCM_FrameOfReferenceUID, "1.2.826.0.1.3680043.10.511.9.1");
    data.putAndInsertString(DCM_PositionReferenceIndicator, "SN");
    data.putAndInsertString(DCM_Manufacturer, "Bench Scanners");
    data.putAndInsertString(DCM_ManufacturerModelName, "Spiral 64");
    data.putAndInsertString(DCM_StationName, "CT2CONSOLE");
    data.putAndInsertString(DCM_DeviceSerialNumber, "60123");
    data.putAndInsertString(DCM_SoftwareVersions, "sv 4.2.1\\build 17");
}

void putAcquisition(DcmDataset &data)
{
    data.putAndInsertString(DCM_ContrastBolusAgent, "APPLIED");
    data.putAndInsertString(DCM_ScanOptions, "HELICAL MODE");
    data.putAndInsertString(DCM_SliceThickness, "1.250000");
    data.putAndInsertString(DCM_KVP, "120");
    data.putAndInsertString(DCM_DataCollectionDiameter, "500.000000");
    data.putAndInsertString(DCM_ReconstructionDiameter, "360.000000");
    data.putAndInsertString(DCM_DistanceSourceToDetector, "949.075000");
    data.putAndInsertString(DCM_DistanceSourceToPatient, "541.000000");
    data.putAndInsertString(DCM_GantryDetectorTilt, "0.000000");
    data.putAndInsertString(DCM_TableHeight, "142.500000");
    data.putAndInsertString(DCM_RotationDirection, "CW");
    data.putAndInsertString(DCM_ExposureTime, "500");
    data.putAndInsertString(DCM_XRayTubeCurrent, "320");
    data.putAndInsertString(DCM_Exposure, "160");
    data.putAndInsertString(DCM_FilterType, "BODY FILTER");
    data.putAndInsertString(DCM_GeneratorPower, "38400");
    data.putAndInsertString(DCM_FocalSpots, "1.200000");
    data.putAndInsertString(DCM_ConvolutionKernel, "STANDARD");
    data.putAndInsertFloat64(DCM_SingleCollimationWidth, 0.625);
    data.putAndInsertFloat64(DCM_TotalCollimationWidth, 40);
    data.putAndInsertFloat64(DCM_SpiralPitchFactor, 0.984);
}

void putImage(DcmDataset &data)
{
    data.putAndInsertString(DCM_ImageType, "ORIGINAL\\PRIMARY\\AXIAL");
    data.putAndInsertString(DCM_SOPClassUID, UID_CTImageStorage);
    data.putAndInsertString(DCM_SOPInstanceUID, wildTexts[FileTemplate::InstanceUid]);
    data.putAndInsertString(DCM_InstanceCreationDate, wildTexts[FileTemplate::StudyDate]);
    data.putAndInsertString(DCM_InstanceCreationTime, "101803.000000");
    data.putAndInsertString(DCM_InstanceNumber, wildTexts[FileTemplate::InstanceNumber]);
    data.putAndInsertString(DCM_AcquisitionNumber, "1");
    data.putAndInsertString(DCM_AcquisitionDate, wildTexts[FileTemplate::StudyDate]);
    data.putAndInsertString(DCM_AcquisitionTime, "101741.512000");
    data.putAndInsertString(DCM_ContentDate, wildTexts[FileTemplate::StudyDate]);
    data.putAndInsertString(DCM_ContentTime, "101741.512000");
    const std::string position = std::string("-180.0\\-180.0\\") + wildTexts[FileTemplate::SlicePosition];
    data.putAndInsertString(DCM_ImagePositionPatient, position.c_str());
    data.putAndInsertString(
        DCM_ImageOrientationPatient, "1.000000\\0.000000\\0.000000\\0.000000\\1.000000\\0.000000");
    data.putAndInsertString(DCM_SliceLocation, wildTexts[FileTemplate::SlicePosition]);
    data.putAndInsertString(DCM_WindowCenter, "40");
    data.putAndInsertString(DCM_WindowWidth, "400");
    data.putAndInsertString(DCM_RescaleIntercept, "-1024");
    data.putAndInsertString(DCM_RescaleSlope, "1");
    data.putAndInsertString(DCM_RescaleType, "HU");
}

/// What scanners write besides: sequences and private elements, which a reader has to get past.
void putSequencesAndPrivate(DcmDataset &data)
{
    DcmItem *item = nullptr;
    data.findOrCreateSequenceItem(DCM_ReferencedStudySequence, item);
    item->putAndInsertString(DCM_ReferencedSOPClassUID, UID_RETIRED_DetachedStudyManagementSOPClass);
    item->putAndInsertString(DCM_ReferencedSOPInstanceUID, "1.2.826.0.1.3680043.10.511.8.1");
    data.findOrCreateSequenceItem(DCM_RequestAttributesSequence, item);
    item->putAndInsertString(DCM_RequestedProcedureID, "RP0815");
    item->putAndInsertString(DCM_ScheduledProcedureStepID, "SP0815");
    item->putAndInsertString(DCM_ScheduledProcedureStepDescription, "CT Thorax");
    data.putAndInsertString(DcmTag(0x0009, 0x0010, EVR_LO), "BENCH_SCANNER_01");
    data.putAndInsertString(DcmTag(0x0009, 0x1001, EVR_LO), "GENERATOR HIGH");
    data.putAndInsertString(DcmTag(0x0019, 0x0010, EVR_LO), "BENCH_ACQU_01");
    data.putAndInsertString(DcmTag(0x0019, 0x1002, EVR_DS), "912.000000");
    const std::array<Uint8, 64> calibration = {};
    data.putAndInsertUint8Array(DcmTag(0x0019, 0x1010, EVR_OB), calibration.data(), calibration.size());
}

void putPixels(DcmDataset &data, int side)
{
    data.putAndInsertUint16(DCM_SamplesPerPixel, 1);
    data.putAndInsertString(DCM_PhotometricInterpretation, "MONOCHROME2");
    data.putAndInsertUint16(DCM_Rows, Uint16(side));
    data.putAndInsertUint16(DCM_Columns, Uint16(side));
    data.putAndInsertString(DCM_PixelSpacing, "0.703125\\0.703125");
    data.putAndInsertUint16(DCM_BitsAllocated, 16);
    data.putAndInsertUint16(DCM_BitsStored, 12);
    data.putAndInsertUint16(DCM_HighBit, 11);
    data.putAndInsertUint16(DCM_PixelRepresentation, 0);
    const std::vector<Uint16> pixels(std::size_t(side) * std::size_t(side));
    data.putAndInsertUint16Array(DCM_PixelData, pixels.data(), static_cast<unsigned long>(pixels.size()));
}

QByteArray encoded(DcmFileFormat &file, std::size_t room)
{
    std::vector<char> memory(room);
    DcmOutputBufferStream stream(memory.data(), memory.size());
    file.transferInit();
    const OFCondition written =
        file.write(stream, EXS_LittleEndianExplicit, EET_ExplicitLength, nullptr, EGL_recalcGL);
    file.transferEnd();
    if (written.bad()) {
        qFatal("the template cannot be encoded: %s", written.text());
    }
    void *bytes = nullptr;
    offile_off_t size = 0;
    stream.flushBuffer(bytes, size);
    return QByteArray(static_cast<const char *>(bytes), int(size));
}

} // namespace

FileTemplate::FileTemplate(int side)
{
    constexpr std::size_t headerRoom = 64U << 10U;
    DcmFileFormat file;
    DcmDataset &data = *file.getDataset();
    putPatientAndStudy(data);
    putSeries(data);
    putAcquisition(data);
    putImage(data);
    putSequencesAndPrivate(data);
    putPixels(data, side);
    const int pixelBytes = side * side * 2;
    m_bytes = encoded(file, headerRoom + std::size_t(pixelBytes));
    m_pixels = m_bytes.size() - pixelBytes;
    findPlaces();
}

void FileTemplate::findPlaces()
{
    const QByteArray header = m_bytes.left(m_pixels);
    for (std::size_t field = 0; field < FieldCount; ++field) {
        int at = -1;
        while ((at = header.indexOf(wildTexts[field], at + 1)) >= 0) {
            m_places[field].push_back(at);
        }
        if (m_places[field].empty()) {
            qFatal("the template lacks %s", wildTexts[field]);
        }
    }
}

void FileTemplate::set(Field field, const QByteArray &text)
{
    const QByteArray value = text.leftJustified(int(std::strlen(wildTexts[field])), ' ', true);
    for (const int place : m_places[field]) {
        m_bytes.replace(place, value.size(), value);
    }
}

void FileTemplate::setPixels(quint64 seed)
{
    quint64 state = seed * 0x9e3779b97f4a7c15U + 1;
    char *const pixels = m_bytes.data() + m_pixels;
    const int size = m_bytes.size() - m_pixels;
    for (int at = 0; at + int(sizeof state) <= size; at += int(sizeof state)) {
        state ^= state << 13U;
        state ^= state >> 7U;
        state ^= state << 17U;
        const quint64 twelveBits = state & 0x0fff0fff0fff0fffU;
        std::memcpy(pixels + at, &twelveBits, sizeof twelveBits);
    }
}
