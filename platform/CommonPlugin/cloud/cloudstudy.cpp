#include "cloudstudy.h"

#include "dicomdate.h"
#include "personname.h"

#include <algorithm>

Qt::CheckState CloudStudy::check() const
{
    if (isChecked) {
        return Qt::Checked;
    }
    const bool isAny =
        std::any_of(series.begin(), series.end(), [](const CloudSeries &one) { return one.isChecked; });
    return isAny ? Qt::PartiallyChecked : Qt::Unchecked;
}

CloudStudy CloudStudy::of(const DicomJson &answer)
{
    CloudStudy study;
    study.uid = answer.text(DicomTag::studyUid);
    study.name = personNameForDisplay(answer.text(DicomTag::patientName));
    study.id = answer.text(DicomTag::patientId);
    study.date = dateForDisplay(answer.text(DicomTag::studyDate));
    study.modalities = answer.texts(DicomTag::modalitiesInStudy).join(QLatin1Char('/'));
    study.description = answer.text(DicomTag::studyDescription);
    study.images = static_cast<int>(answer.number(DicomTag::imagesInStudy));
    return study;
}

DownloadStudy CloudStudy::wanted() const
{
    QStringList label{name.isEmpty() ? id : name, description, date};
    label.removeAll(QString());
    DownloadStudy wanted{uid, label.join(QStringLiteral(" · ")), {}};
    for (const CloudSeries &one : series) {
        if (one.isChecked) {
            wanted.series.append({one.uid, one.images});
        }
    }
    return wanted;
}
