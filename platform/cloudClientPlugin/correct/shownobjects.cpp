#include "shownobjects.h"

#include <QSet>

#include <algorithm>

ShownObjects::ShownObjects(
    ServiceCalls &calls, const QVector<ServiceObject> &objects, const PatientChanges &changes)
    : m_calls(calls)
    , m_objects(objects)
    , m_changes(changes)
{
    for (const ServiceObject &object : objects) {
        m_byUid.insert(object.sopInstanceUid, &object);
    }
}

WebFailure ShownObjects::look(const std::function<void(int seen)> &show)
{
    m_states.clear();
    QSet<QString> series;
    for (const ServiceObject &object : m_objects) {
        series.insert(QStringLiteral("studies/%1/series/%2").arg(object.studyUid, object.seriesUid));
    }
    for (const QString &resource : qAsConst(series)) {
        const WebFailure failure = lookAtSeries(resource);
        if (!failure.isNone()) {
            return failure;
        }
        show(m_states.size());
    }
    return {};
}

WebFailure ShownObjects::lookAtSeries(const QString &resource)
{
    QVector<DicomJson> shown;
    const WebFailure failure = m_calls.read(resource + QStringLiteral("/metadata"), shown);
    if (!failure.isNone()) {
        return failure;
    }
    for (const DicomJson &one : qAsConst(shown)) {
        if (const ServiceObject *object = m_byUid.value(one.text(DicomTag::sopInstanceUid))) {
            m_states.insert(object->sopInstanceUid, holdsOf(one, object->before));
        }
    }
    return {};
}

/// Which of the two copies of an object is shown; Mixed where it is neither.
ShownObjects::Holds ShownObjects::holdsOf(const DicomJson &shown, const PatientValues &before) const
{
    bool isOld = true;
    bool isNew = true;
    for (auto change = m_changes.cbegin(); change != m_changes.cend(); ++change) {
        const QString value = shown.text(PatientValues::tag(change.key()));
        isOld = isOld && PatientValues::isSame(change.key(), value, before[change.key()]);
        isNew = isNew && PatientValues::isSame(change.key(), value, change.value());
    }
    return isNew ? Holds::New : (isOld ? Holds::Old : Holds::Mixed);
}

ShownObjects::Holds ShownObjects::holds() const
{
    const auto areAll = [this](Holds state) {
        return std::count(m_states.cbegin(), m_states.cend(), state) == m_objects.size();
    };
    return areAll(Holds::New) ? Holds::New : (areAll(Holds::Old) ? Holds::Old : Holds::Mixed);
}
