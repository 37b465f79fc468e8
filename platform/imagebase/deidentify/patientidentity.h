#pragma once

#include "characterset.h"
#include "elementtext.h"
#include "textfold.h"

/// What tells the patient of a data set from others: the number and who gave it, else name and birth date,
/// else the study.
inline QByteArray patientIdentity(DcmItem &dataset)
{
    const QByteArray number = ElementText::of(dataset, DCM_PatientID).trimmed();
    if (!number.isEmpty()) {
        const QByteArray issuer = ElementText::of(dataset, DCM_IssuerOfPatientID).trimmed();
        return "id:" + number + (issuer.isEmpty() ? QByteArray() : '\\' + issuer);
    }
    const QByteArray name = ElementText::of(dataset, DCM_PatientName).trimmed();
    return name.isEmpty() ? "study:" + ElementText::of(dataset, DCM_StudyInstanceUID)
                          : "name:" + name + '\\' + ElementText::of(dataset, DCM_PatientBirthDate);
}

/// Name and birth date, with a backslash between; the name folded, so that ways of writing it are the same.
inline QString patientPerson(DcmItem &dataset)
{
    CharacterSet characters;
    characters.select(ElementText::of(dataset, DCM_SpecificCharacterSet));
    const QByteArray name = ElementText::of(dataset, DCM_PatientName);
    return foldedName(characters.decode(name.constData(), name.size(), CharacterSet::Form::PersonName))
        + QLatin1Char('\\')
        + QString::fromLatin1(ElementText::of(dataset, DCM_PatientBirthDate)).remove(QLatin1Char('.'));
}
