#include "samplewriter.h"

#include <QFile>
#include <QTextCodec>
#include <QTime>

namespace {

/// A root of the derived kind: 2.25 and a number, here a fixed one, so that every run writes the same UIDs.
constexpr char uidRoot[] = "2.25.271828182845904523536";
constexpr char softwareVersion[] = "1";
constexpr int minutesPerSeries = 4;
constexpr char escape = '\x1b';
constexpr char toAscii[] = "\x1b(B";

struct PictureKind
{
    const char *modality;
    const char *sopClass;
    const char *imageType;
    const char *manufacturerModel;
    bool hounsfield;
};

PictureKind kindOf(SamplePicture picture)
{
    switch (picture) {
    case SamplePicture::HeadCt:
    case SamplePicture::TrunkCt:
        return {"CT", UID_CTImageStorage, "ORIGINAL\\PRIMARY\\AXIAL", "Phantom CT", true};
    case SamplePicture::ChestX:
        return {"CR", UID_ComputedRadiographyImageStorage, "ORIGINAL\\PRIMARY", "Phantom CR", false};
    case SamplePicture::Doppler:
        return {"US", UID_UltrasoundImageStorage, "ORIGINAL\\PRIMARY\\TTE\\0011", "Phantom US", false};
    default:
        return {"MR", UID_MRImageStorage, "ORIGINAL\\PRIMARY\\M\\SE", "Phantom MR", false};
    }
}

QString afterMinutes(const QString &time, int minutes)
{
    return QTime::fromString(time, QStringLiteral("HHmmss"))
        .addSecs(minutes * 60)
        .toString(QStringLiteral("HHmmss"));
}

} // namespace

SampleWriter::SampleWriter(const SamplePatient &patient, const SampleStudy &study, const SampleSeries &series,
    SamplePosition position)
    : m_patient(patient)
    , m_study(study)
    , m_series(series)
    , m_position(position)
{ }

QString SampleWriter::write(const QString &path)
{
    putPatient();
    putStudy();
    putSeries();
    putEquipment();
    putGeometry();
    putPixels(renderSlice(m_series, m_position.slice));
    const OFCondition written =
        m_file.saveFile(QFile::encodeName(path).constData(), EXS_LittleEndianExplicit, EET_ExplicitLength);
    return written.good() ? QString() : QString::fromUtf8(written.text());
}

void SampleWriter::putPatient()
{
    m_file.getDataset()->putAndInsertString(DCM_SpecificCharacterSet, m_patient.characterSet.constData());
    putName(DCM_PatientName, m_patient.name);
    putText(DCM_PatientID, m_patient.id);
    putCode(DCM_PatientBirthDate, m_patient.birthDate);
    putCode(DCM_PatientSex, m_patient.sex);
    putText(DCM_PatientComments, m_patient.comments);
}

void SampleWriter::putStudy()
{
    putCode(DCM_StudyInstanceUID, uid(2));
    putText(DCM_StudyID, m_study.id);
    putCode(DCM_StudyDate, m_study.date);
    putCode(DCM_StudyTime, m_study.time);
    putText(DCM_AccessionNumber, m_study.accession);
    putText(DCM_StudyDescription, m_study.description);
    putName(DCM_ReferringPhysicianName, m_study.referringPhysician);
    putText(DCM_InstitutionName, m_study.institution);
    putCode(DCM_PatientAge, m_study.age);
    putCode(DCM_PatientWeight, m_study.weight);
}

void SampleWriter::putSeries()
{
    const PictureKind kind = kindOf(m_series.picture);
    const QString start = afterMinutes(m_study.time, (m_position.series + 1) * minutesPerSeries);
    putCode(DCM_SeriesInstanceUID, uid(3));
    putCode(DCM_Modality, QString::fromLatin1(kind.modality));
    putCode(DCM_SeriesNumber, QString::number(m_position.series + 1));
    putCode(DCM_SeriesDate, m_study.date);
    putCode(DCM_SeriesTime, start);
    putText(DCM_SeriesDescription, m_series.description);
    putText(DCM_ProtocolName, m_series.protocol);
    putCode(DCM_BodyPartExamined, m_series.bodyPart);
    putCode(DCM_SOPClassUID, QString::fromLatin1(kind.sopClass));
    putCode(DCM_SOPInstanceUID, uid(4));
    putCode(DCM_ImageType, QString::fromLatin1(kind.imageType));
    putCode(DCM_InstanceNumber, QString::number(m_position.slice + 1));
    putCode(DCM_AcquisitionNumber, QStringLiteral("1"));
    putCode(DCM_AcquisitionDate, m_study.date);
    putCode(DCM_AcquisitionTime, start);
    putCode(DCM_ContentDate, m_study.date);
    putCode(DCM_ContentTime, start);
}

void SampleWriter::putEquipment()
{
    const PictureKind kind = kindOf(m_series.picture);
    putText(DCM_Manufacturer, QStringLiteral("Sample Phantoms"));
    putText(DCM_ManufacturerModelName, QString::fromLatin1(kind.manufacturerModel));
    putText(DCM_StationName, QString::fromLatin1(kind.modality) + QLatin1Char('1'));
    putText(DCM_SoftwareVersions, QString::fromLatin1(softwareVersion));
}

void SampleWriter::putGeometry()
{
    if (m_series.picture == SamplePicture::Doppler) {
        return;
    }
    const SampleGeometry &g = m_series.geometry;
    putNumbers(DCM_PixelSpacing, {g.spacing, g.spacing});
    if (m_series.picture == SamplePicture::ChestX) {
        putCode(DCM_ViewPosition, QStringLiteral("PA"));
        return;
    }
    const Vector3 first = firstPixel(m_series, m_position.slice);
    const Vector3 centre = sliceCentre(m_series, m_position.slice);
    putCode(DCM_FrameOfReferenceUID, uid(2) + QStringLiteral(".0"));
    putCode(DCM_PositionReferenceIndicator, QString());
    putCode(DCM_PatientPosition, QStringLiteral("HFS"));
    putNumbers(DCM_ImagePositionPatient, {first.x, first.y, first.z});
    putNumbers(DCM_ImageOrientationPatient, {g.row.x, g.row.y, g.row.z, g.column.x, g.column.y, g.column.z});
    putNumbers(DCM_SliceThickness, {g.gap});
    putNumbers(DCM_SpacingBetweenSlices, {g.gap});
    const bool sagittal = g.row.y != 0;
    putNumbers(DCM_SliceLocation, {sagittal ? centre.x : (g.column.z != 0 ? centre.y : centre.z)});
}

void SampleWriter::putPixels(const SampleImage &image)
{
    const bool hounsfield = kindOf(m_series.picture).hounsfield;
    DcmDataset *data = m_file.getDataset();
    data->putAndInsertUint16(DCM_Rows, Uint16(image.rows));
    data->putAndInsertUint16(DCM_Columns, Uint16(image.columns));
    data->putAndInsertUint16(DCM_SamplesPerPixel, image.coloured ? 3 : 1);
    data->putAndInsertString(DCM_PhotometricInterpretation, image.coloured ? "RGB" : "MONOCHROME2");
    data->putAndInsertUint16(DCM_PixelRepresentation, hounsfield ? 1 : 0);
    if (image.coloured) {
        data->putAndInsertUint16(DCM_PlanarConfiguration, 0);
    }
    const Uint16 stored = image.coloured ? 8 : (hounsfield ? 16 : 12);
    data->putAndInsertUint16(DCM_BitsAllocated, image.coloured ? 8 : 16);
    data->putAndInsertUint16(DCM_BitsStored, stored);
    data->putAndInsertUint16(DCM_HighBit, Uint16(stored - 1));
    if (image.coloured) {
        data->putAndInsertUint8Array(DCM_PixelData,
            reinterpret_cast<const Uint8 *>(image.colours.constData()),
            static_cast<unsigned long>(image.colours.size()));
        return;
    }
    putNumbers(DCM_WindowCenter, {m_series.windowCentre});
    putNumbers(DCM_WindowWidth, {m_series.windowWidth});
    if (hounsfield) {
        putNumbers(DCM_RescaleIntercept, {0});
        putNumbers(DCM_RescaleSlope, {1});
        putCode(DCM_KVP, QStringLiteral("120"));
    }
    data->putAndInsertUint16Array(
        DCM_PixelData, image.grey.constData(), static_cast<unsigned long>(image.grey.size()));
}

void SampleWriter::putText(const DcmTagKey &tag, const QString &text)
{
    m_file.getDataset()->putAndInsertString(tag, encoded(text).constData());
}

/// Each component is converted by itself: an escape sequence ends before a delimiter.
void SampleWriter::putName(const DcmTagKey &tag, const QString &name)
{
    QByteArray bytes;
    QString component;
    for (const QChar letter : name) {
        if (letter == QLatin1Char('^') || letter == QLatin1Char('=')) {
            bytes += encoded(component) + letter.toLatin1();
            component.clear();
        } else {
            component += letter;
        }
    }
    m_file.getDataset()->putAndInsertString(tag, (bytes + encoded(component)).constData());
}

void SampleWriter::putCode(const DcmTagKey &tag, const QString &code)
{
    m_file.getDataset()->putAndInsertString(tag, code.toLatin1().constData());
}

void SampleWriter::putNumbers(const DcmTagKey &tag, std::initializer_list<float> numbers)
{
    QStringList texts;
    for (const float number : numbers) {
        texts.append(QString::number(double(number), 'g', 7));
    }
    putCode(tag, texts.join(QLatin1Char('\\')));
}

QByteArray SampleWriter::encoded(const QString &text) const
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    QByteArray bytes =
        QTextCodec::codecForName(m_patient.codec)->fromUnicode(text.constData(), text.size(), &state);
    // The codec leaves the second character set on; a DICOM value goes back to the first before it ends.
    if (bytes.contains(escape) && !bytes.endsWith(toAscii)) {
        bytes += toAscii;
    }
    return bytes;
}

/// The UID of the study (depth 2), the series (3) or the image (4).
QString SampleWriter::uid(int depth) const
{
    const int numbers[] = {
        m_position.patient + 1, m_position.study + 1, m_position.series + 1, m_position.slice + 1};
    QString text = QString::fromLatin1(uidRoot);
    for (int i = 0; i < depth; ++i) {
        text += QLatin1Char('.') + QString::number(numbers[i]);
    }
    return text;
}
