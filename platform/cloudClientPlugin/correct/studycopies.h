#pragma once

#include "servicecalls.h"

#include <QHash>
#include <QSet>
#include <QVector>

/// A study as an archive keeps it below one patient.
struct StudyCopy
{
    QString id; ///< the archive's own
    QString patientId;
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
    /// What a copy has besides the objects in question: somebody else has put it there.
    enum class Others : quint8 {
        Refuse, ///< nothing is removed from that copy
        Leave ///< it stays
    };
    /// Removes some objects of a study from all its copies but one, once that one has them all.
    /// @param uids of the objects
    WebFailure keepOnly(const QString &studyUid, const QSet<QString> &uids,
        const std::function<bool(const StudyCopy &)> &isToStay, Others others);

private:
    using Instances = QHash<QString, QString>; ///< the archive's own names of objects, by their UIDs
    WebFailure list(const StudyCopy &copy, Instances &instances);
    WebFailure removeFrom(const StudyCopy &copy, const QSet<QString> &uids, Others others);

    ServiceCalls m_calls;
};
