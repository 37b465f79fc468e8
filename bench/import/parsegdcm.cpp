// bench_parse_gdcm FOLDER [ids|header]: GDCM reads only the ids, or the whole header up to the pixels
#include "parserace.h"

#include <gdcmDataSet.h>
#include <gdcmReader.h>
#include <gdcmTag.h>

#include <cstring>
#include <set>

namespace {

const gdcm::Tag patientName(0x0010, 0x0010);
const gdcm::Tag patientId(0x0010, 0x0020);
const gdcm::Tag studyUid(0x0020, 0x000d);
const gdcm::Tag seriesUid(0x0020, 0x000e);
const gdcm::Tag instanceUid(0x0008, 0x0018);
const gdcm::Tag pixelData(0x7fe0, 0x0010);

QByteArray text(const gdcm::DataSet &data, const gdcm::Tag &tag)
{
    if (!data.FindDataElement(tag)) {
        return {};
    }
    const gdcm::ByteValue *value = data.GetDataElement(tag).GetByteValue();
    return value ? QByteArray(value->GetPointer(), int(value->GetLength())).replace('\0', ' ').trimmed()
                 : QByteArray();
}

bool parse(const QByteArray &path, HeaderIds *ids, bool idsOnly)
{
    gdcm::Reader reader;
    reader.SetFileName(path.constData());
    const bool good = idsOnly
        ? reader.ReadSelectedTags({instanceUid, patientName, patientId, studyUid, seriesUid})
        : reader.ReadUpToTag(pixelData);
    const gdcm::DataSet &data = reader.GetFile().GetDataSet();
    ids->patientId = text(data, patientId);
    ids->patientName = text(data, patientName);
    ids->studyUid = text(data, studyUid);
    ids->seriesUid = text(data, seriesUid);
    ids->instanceUid = text(data, instanceUid);
    return good && !ids->instanceUid.isEmpty();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2) {
        return 2;
    }
    const bool idsOnly = argc < 3 || std::strcmp(argv[2], "header") != 0;
    return runParseRace(idsOnly ? QStringLiteral("GDCM, ids") : QStringLiteral("GDCM, header"),
        QString::fromLocal8Bit(argv[1]), [idsOnly] {
            return [idsOnly](const QByteArray &path, HeaderIds *ids) { return parse(path, ids, idsOnly); };
        });
}
