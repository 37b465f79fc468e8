// bench_parse_dcmtk FOLDER: DCMTK reads each header up to the pixels
#include "parserace.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

namespace {

QByteArray text(DcmDataset &data, const DcmTagKey &tag)
{
    OFString value;
    data.findAndGetOFStringArray(tag, value);
    return QByteArray(value.c_str(), int(value.size())).trimmed();
}

bool parse(const QByteArray &path, HeaderIds *ids)
{
    DcmFileFormat file;
    const OFCondition good = file.loadFileUntilTag(
        path.constData(), EXS_Unknown, EGL_noChange, DCM_MaxReadLength, ERM_autoDetect, DCM_PixelData);
    DcmDataset &data = *file.getDataset();
    ids->patientId = text(data, DCM_PatientID);
    ids->patientName = text(data, DCM_PatientName);
    ids->studyUid = text(data, DCM_StudyInstanceUID);
    ids->seriesUid = text(data, DCM_SeriesInstanceUID);
    ids->instanceUid = text(data, DCM_SOPInstanceUID);
    return good.good() && !ids->instanceUid.isEmpty();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2) {
        return 2;
    }
    // It would write a line for each file that it leaves at the pixels.
    OFLog::configure(OFLogger::OFF_LOG_LEVEL);
    return runParseRace(
        QStringLiteral("DCMTK, header"), QString::fromLocal8Bit(argv[1]), [] { return parse; });
}
