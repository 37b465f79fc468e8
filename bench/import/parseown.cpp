// bench_parse_own FOLDER: the index's own reader, which fills every attribute that the index keeps
#include "parserace.h"

#include "dicomreader.h"

int main(int argc, char **argv)
{
    if (argc < 2) {
        return 2;
    }
    return runParseRace(QStringLiteral("own reader"), QString::fromLocal8Bit(argv[1]), [] {
        return [reader = std::make_shared<DicomReader>()](const QByteArray &path, HeaderIds *ids) {
            const DicomReadResult result = reader->read(path);
            ids->patientId = result.header[Attribute::PatientID].toUtf8();
            ids->patientName = result.header[Attribute::PatientName].toUtf8();
            ids->studyUid = result.header[Attribute::StudyInstanceUID].toUtf8();
            ids->seriesUid = result.header[Attribute::SeriesInstanceUID].toUtf8();
            ids->instanceUid = result.header[Attribute::SOPInstanceUID].toUtf8();
            return result.outcome == DicomReadResult::Outcome::Image;
        };
    });
}
