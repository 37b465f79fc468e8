#include "foundstudy.h"

#include "dicomdate.h"
#include "personname.h"

#include <QLocale>

#include <limits>

FoundStudy FoundStudy::of(const DicomJson &answer)
{
    FoundStudy study;
    study.uid = answer.text(DicomTag::studyUid);
    study.name = personNameForDisplay(answer.text(DicomTag::patientName));
    study.id = answer.text(DicomTag::patientId);
    study.date = answer.text(DicomTag::studyDate);
    study.modalities = answer.texts(DicomTag::modalitiesInStudy).join(QLatin1Char('/'));
    study.description = answer.text(DicomTag::studyDescription);
    study.images = countOf(answer, DicomTag::imagesInStudy);
    return study;
}

int FoundStudy::countOf(const DicomJson &answer, quint32 tag)
{
    return int(qBound<qint64>(-1, answer.number(tag), std::numeric_limits<int>::max()));
}

QString FoundStudy::countText(int images)
{
    return images < 0 ? QString() : QLocale().toString(images);
}

QString FoundStudy::text(int field) const
{
    switch (field) {
    case Name:
        return name;
    case Id:
        return id;
    case Date:
        return dateForDisplay(date);
    case Modalities:
        return modalities;
    case Description:
        return description;
    case Images:
        return countText(images);
    default:
        return {};
    }
}

QVariant FoundStudy::sortKey(int field) const
{
    return field == Date ? QVariant(date) : field == Images ? QVariant(images) : QVariant(text(field));
}
