#pragma once

#include "elementtext.h"

/// What tells the patient of a data set from others: the number, else name and birth date, else the study.
inline QByteArray patientIdentity(DcmItem &dataset)
{
    const QByteArray number = ElementText::of(dataset, DCM_PatientID).trimmed();
    if (!number.isEmpty()) {
        return "id:" + number;
    }
    const QByteArray name = ElementText::of(dataset, DCM_PatientName).trimmed();
    return name.isEmpty() ? "study:" + ElementText::of(dataset, DCM_StudyInstanceUID)
                          : "name:" + name + '\\' + ElementText::of(dataset, DCM_PatientBirthDate);
}
