#include "retrievecontexts.h"

#include "dicomreader.h"
#include "dicomuids.h"
#include "storageclasses.h"

#include <QHash>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcuid.h>

namespace {

constexpr int mostStorageContexts = ScuAssociation::mostContexts - 1;
/// What the expected classes may take of it.
constexpr int mostExpected = 90;

const QHash<QString, QVector<QByteArray>> &classesByModality()
{
    static const QHash<QString, QVector<QByteArray>> table{
        {QStringLiteral("CT"), {UID_CTImageStorage, UID_EnhancedCTImageStorage}},
        {QStringLiteral("MR"), {UID_MRImageStorage, UID_EnhancedMRImageStorage, UID_MRSpectroscopyStorage}},
        {QStringLiteral("US"),
            {UID_UltrasoundImageStorage, UID_UltrasoundMultiframeImageStorage,
                UID_RETIRED_UltrasoundImageStorage, UID_RETIRED_UltrasoundMultiframeImageStorage}},
        {QStringLiteral("CR"), {UID_ComputedRadiographyImageStorage}},
        {QStringLiteral("DX"), {UID_DigitalXRayImageStorageForPresentation}},
        {QStringLiteral("MG"),
            {UID_DigitalMammographyXRayImageStorageForPresentation, UID_BreastTomosynthesisImageStorage}},
        {QStringLiteral("XA"), {UID_XRayAngiographicImageStorage, UID_EnhancedXAImageStorage}},
        {QStringLiteral("RF"), {UID_XRayRadiofluoroscopicImageStorage}},
        {QStringLiteral("NM"), {UID_NuclearMedicineImageStorage, UID_RETIRED_NuclearMedicineImageStorage}},
        {QStringLiteral("PT"), {UID_PositronEmissionTomographyImageStorage, UID_EnhancedPETImageStorage}},
        {QStringLiteral("SEG"), {UID_SegmentationStorage}},
        {QStringLiteral("SR"), {UID_BasicTextSRStorage, UID_EnhancedSRStorage, UID_ComprehensiveSRStorage}},
        {QStringLiteral("KO"), {UID_KeyObjectSelectionDocumentStorage}},
        {QStringLiteral("PR"), {UID_GrayscaleSoftcopyPresentationStateStorage}},
        {QStringLiteral("RTDOSE"), {UID_RTDoseStorage}},
        {QStringLiteral("RTIMAGE"), {UID_RTImageStorage}},
        {QStringLiteral("ES"), {UID_VLEndoscopicImageStorage, UID_VideoEndoscopicImageStorage}},
        {QStringLiteral("XC"), {UID_VLPhotographicImageStorage, UID_VideoPhotographicImageStorage}},
        {QStringLiteral("OP"),
            {UID_OphthalmicPhotography8BitImageStorage, UID_OphthalmicPhotography16BitImageStorage}},
        {QStringLiteral("OPT"), {UID_OphthalmicTomographyImageStorage}},
        {QStringLiteral("SM"),
            {UID_VLWholeSlideMicroscopyImageStorage, UID_VLSlideCoordinatesMicroscopicImageStorage}},
    };
    return table;
}

const QVector<QByteArray> &plainSyntaxes()
{
    static const QVector<QByteArray> list{DicomUid::explicitLittleEndian, DicomUid::implicitLittleEndian};
    return list;
}

/// How archives have objects besides.
const QVector<QByteArray> &otherSyntaxes()
{
    static const QVector<QByteArray> list{UID_JPEGProcess14SV1TransferSyntax, UID_JPEGProcess1TransferSyntax,
        UID_JPEG2000LosslessOnlyTransferSyntax, UID_JPEG2000TransferSyntax, UID_JPEGLSLosslessTransferSyntax,
        UID_RLELosslessTransferSyntax, UID_JPEGProcess2_4TransferSyntax, UID_JPEGProcess14TransferSyntax,
        UID_JPEGLSLossyTransferSyntax, DicomUid::deflated, DicomUid::bigEndian,
        UID_MPEG4HighProfileLevel4_1TransferSyntax, UID_MPEG2MainProfileAtMainLevelTransferSyntax};
    return list;
}

QVector<QByteArray> expectedClasses(const ExpectedObjects &expected)
{
    QVector<QByteArray> list;
    const auto add = [&list](const QByteArray &uid) {
        if (!list.contains(uid)) {
            list.append(uid);
        }
    };
    for (const QString &uid : expected.classes) {
        if (DicomReader::isUid(uid) && StorageClasses::isStorage(uid.toLatin1().constData(), true)) {
            add(uid.toLatin1());
        }
    }
    for (const QString &modality : expected.modalities) {
        for (const QByteArray &uid : classesByModality().value(modality)) {
            add(uid);
        }
    }
    add(UID_SecondaryCaptureImageStorage);
    return list;
}

} // namespace

QVector<ScuContext> retrieveContexts(const ExpectedObjects &expected)
{
    QVector<ScuContext> contexts;
    QVector<QByteArray> offered;
    const int each = 1 + otherSyntaxes().size();
    for (const QByteArray &uid : expectedClasses(expected)) {
        if (contexts.size() + each > mostExpected) {
            break;
        }
        offered.append(uid);
        contexts.append({uid, plainSyntaxes(), true});
        for (const QByteArray &syntax : otherSyntaxes()) {
            contexts.append({uid, {syntax}, true});
        }
    }
    const QVector<QByteArray> all = plainSyntaxes() + otherSyntaxes();
    for (int i = 0; i < numberOfDcmLongSCUStorageSOPClassUIDs && contexts.size() < mostStorageContexts; ++i) {
        const QByteArray uid(dcmLongSCUStorageSOPClassUIDs[i]);
        if (!offered.contains(uid)) {
            contexts.append({uid, all, true});
        }
    }
    return contexts;
}
