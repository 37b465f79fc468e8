#include "dicomfilebuilder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

namespace {
constexpr quint32 sopClassUid = 0x00080016;
constexpr quint32 sopInstanceUid = 0x00080018;
constexpr quint32 instanceNumberTag = 0x00200013;
constexpr int side = 4;
} // namespace

DicomFileBuilder::DicomFileBuilder()
{
    set(0x00080005, QStringLiteral("ISO_IR 192"));
    set(sopClassUid, QStringLiteral(UID_CTImageStorage));
    set(0x00080060, QStringLiteral("CT"));
    set(0x00080020, QStringLiteral("20240131"));
    set(0x00081030, QStringLiteral("Study of a test"));
    set(0x00200011, QStringLiteral("1"));
    patient(QStringLiteral("ID1"), QStringLiteral("Test^Patient"));
    uids(QStringLiteral("1.2.3.1"), QStringLiteral("1.2.3.1.1"), QStringLiteral("1.2.3.1.1.1"));
    instanceNumber(1);
}

DicomFileBuilder &DicomFileBuilder::set(quint32 tag, const QString &value)
{
    m_values[tag] = value;
    return *this;
}

DicomFileBuilder &DicomFileBuilder::without(quint32 tag)
{
    m_values.erase(tag);
    return *this;
}

DicomFileBuilder &DicomFileBuilder::patient(const QString &id, const QString &name)
{
    return set(0x00100020, id).set(0x00100010, name);
}

DicomFileBuilder &DicomFileBuilder::uids(const QString &study, const QString &series, const QString &instance)
{
    return set(0x0020000d, study).set(0x0020000e, series).set(sopInstanceUid, instance);
}

DicomFileBuilder &DicomFileBuilder::instanceNumber(int number)
{
    return set(instanceNumberTag, QString::number(number));
}

void DicomFileBuilder::write(const QString &path) const
{
    QDir().mkpath(QFileInfo(path).path());
    DcmFileFormat file;
    DcmDataset *data = file.getDataset();
    for (const auto &[tag, value] : m_values) {
        data->putAndInsertString(DcmTag(Uint16(tag >> 16), Uint16(tag & 0xffff)), value.toUtf8().constData());
    }
    const Uint16 pixels[side * side] = {};
    data->putAndInsertUint16(DCM_Rows, side);
    data->putAndInsertUint16(DCM_Columns, side);
    data->putAndInsertUint16(DCM_BitsAllocated, 16);
    data->putAndInsertUint16(DCM_BitsStored, 12);
    data->putAndInsertUint16(DCM_HighBit, 11);
    data->putAndInsertUint16(DCM_PixelRepresentation, 0);
    data->putAndInsertUint16(DCM_SamplesPerPixel, 1);
    data->putAndInsertString(DCM_PhotometricInterpretation, "MONOCHROME2");
    data->putAndInsertUint16Array(DCM_PixelData, pixels, side * side);
    const OFCondition written = file.saveFile(QFile::encodeName(path).constData(), EXS_LittleEndianExplicit);
    if (written.bad()) {
        qFatal("%s: %s", qPrintable(path), written.text());
    }
}

QStringList writeSeries(const QString &folder, int images)
{
    QStringList paths;
    for (int number = 1; number <= images; ++number) {
        paths.append(QStringLiteral("%1/%2.dcm").arg(folder).arg(number));
        DicomFileBuilder()
            .uids(
                QStringLiteral("1.2.3"), QStringLiteral("1.2.3.4"), QStringLiteral("1.2.3.4.%1").arg(number))
            .instanceNumber(number)
            .write(paths.last());
    }
    return paths;
}

void writePatients(const QString &folder, int patients)
{
    for (int number = 0; number < patients; ++number) {
        const QString uid = QStringLiteral("1.9.%1").arg(number);
        DicomFileBuilder()
            .patient(QStringLiteral("I%1").arg(number), QStringLiteral("Import^%1").arg(number))
            .uids(uid, uid + QStringLiteral(".1"), uid + QStringLiteral(".1.1"))
            .write(QStringLiteral("%1/%2.dcm").arg(folder).arg(number));
    }
}
