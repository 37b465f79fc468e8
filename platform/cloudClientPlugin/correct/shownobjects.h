#pragma once

#include "servicecalls.h"
#include "serviceobject.h"

#include <QHash>

/**
 * What a service shows of some objects by their metadata, held against what they were and what they are to
 * be. On the thread of the calls.
 */
class ShownObjects
{
public:
    enum class Holds : quint8 { Unknown, Old, New, Mixed };

    /// @param objects each UID once; like calls and changes they outlive it
    ShownObjects(ServiceCalls &calls, const QVector<ServiceObject> &objects, const PatientChanges &changes);

    /// @param show is told how many were seen
    WebFailure look(const std::function<void(int seen)> &show);
    /// What all of them are, once look() has not failed.
    Holds holds() const;

private:
    WebFailure lookAtSeries(const QString &resource);
    Holds holdsOf(const DicomJson &shown, const PatientValues &before) const;

    ServiceCalls &m_calls;
    const QVector<ServiceObject> &m_objects;
    const PatientChanges &m_changes;
    QHash<QString, const ServiceObject *> m_byUid;
    QHash<QString, Holds> m_states; ///< by UID
};
