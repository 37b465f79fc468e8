#pragma once

#include "servicecalls.h"

#include <QVector>

/// A study as an archive keeps it below one patient.
struct StudyCopy
{
    QString id; ///< the archive's own
    QString patientId;
    int objects = 0;
};

/**
 * Some archives tell objects apart by their patient's ID as well: a study that is stored under another ID is
 * there twice then, and DICOMweb has no word to remove one of them. The archive in widest use of that kind
 * has a REST interface beside its DICOMweb service, which this speaks where it is offered.
 */
class StudyCopies
{
public:
    /// @param service of DICOMweb, as "https://archive/dicom-web". @param stop ends a request soon
    StudyCopies(const WebService &service, const std::atomic<bool> *stop);

    /// From now on requests run to their end.
    void goOnRegardless() { m_calls.goOnRegardless(); }
    /// Whether the archive is one that can be asked. @param failure why that is not known
    bool isOffered(WebFailure &failure);
    WebFailure find(const QString &studyUid, QVector<StudyCopy> &copies);
    /// Removes all copies of a study but one, once that has all objects of the study.
    /// @param objects how many those are; 0 where the archive does not have the study
    WebFailure keepOnly(
        const QString &studyUid, int objects, const std::function<bool(const StudyCopy &)> &isToStay);

private:
    WebFailure remove(const StudyCopy &copy);

    ServiceCalls m_calls;
};
