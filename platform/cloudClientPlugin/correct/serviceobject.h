#pragma once

#include "patientvalues.h"

#include <QJsonArray>

/// One object of the service: as it was, and as it is to be.
struct ServiceObject
{
    QString studyUid;
    QString seriesUid;
    QString sopInstanceUid;
    QString fileName; ///< of both files, each in its folder
    PatientValues before;

    /// What a file says; without UIDs where it is no object of a study.
    static ServiceObject ofFile(const QString &path);
    static ServiceObject ofJson(const QJsonArray &json);
    QJsonArray toJson() const;
};
