#include "faultcorpus.h"

#include "dicomfilebuilder.h"

namespace {

constexpr int imagesOfSeries = 10;
constexpr int seriesOfPatient = 3;
constexpr quint32 imageComments = 0x00204000;

} // namespace

void writeFaultCorpus(const QString &folder, int files, int variant)
{
    for (int number = 0; number < files; ++number) {
        const int series = number / imagesOfSeries;
        const int patient = series / seriesOfPatient;
        const QString study = QStringLiteral("1.2.826.0.1.3680043.10.512.%1").arg(patient + 1);
        const QString seriesUid = study + QStringLiteral(".%1").arg(series + 1);
        DicomFileBuilder()
            .patient(QStringLiteral("F%1").arg(patient), QStringLiteral("Name%1^Given").arg(patient))
            .uids(study, seriesUid, seriesUid + QStringLiteral(".%1").arg(number + 1))
            .instanceNumber(number % imagesOfSeries + 1)
            .set(imageComments, QStringLiteral("variant %1").arg(variant))
            .write(QStringLiteral("%1/p%2/s%3/%4.dcm").arg(folder).arg(patient).arg(series).arg(number));
    }
}
