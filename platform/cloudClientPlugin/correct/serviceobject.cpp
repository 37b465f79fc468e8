#include "serviceobject.h"

#include "dicomreader.h"

#include <QFile>
#include <QFileInfo>

namespace {

PatientValues valuesOf(const DicomHeader &header)
{
    PatientValues values;
    values[PatientField::Name] = header[Attribute::PatientName];
    values[PatientField::Id] = header[Attribute::PatientID];
    values[PatientField::BirthDate] = header[Attribute::PatientBirthDate];
    values[PatientField::Sex] = header[Attribute::PatientSex];
    values[PatientField::Comments] = header[Attribute::PatientComments];
    return values;
}

} // namespace

ServiceObject ServiceObject::ofFile(const QString &path)
{
    const DicomReadResult file = DicomReader().read(QFile::encodeName(path));
    if (file.outcome != DicomReadResult::Outcome::Image) {
        return {};
    }
    return {file.header[Attribute::StudyInstanceUID], file.header[Attribute::SeriesInstanceUID],
        file.header[Attribute::SOPInstanceUID], QFileInfo(path).fileName(), valuesOf(file.header)};
}

QJsonArray ServiceObject::toJson() const
{
    QJsonArray json{studyUid, seriesUid, sopInstanceUid, fileName};
    for (const PatientField field : PatientValues::fields) {
        json.append(before[field]);
    }
    return json;
}

ServiceObject ServiceObject::ofJson(const QJsonArray &json)
{
    int at = 0;
    const auto next = [&] { return json[at++].toString(); };
    ServiceObject object;
    object.studyUid = next();
    object.seriesUid = next();
    object.sopInstanceUid = next();
    object.fileName = next();
    for (const PatientField field : PatientValues::fields) {
        object.before[field] = next();
    }
    return object;
}
