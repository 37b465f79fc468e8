#include "serviceside.h"

#include <algorithm>

using End = CorrectionReport::End;

ServiceSide::ServiceSide(const WebService &service, const std::atomic<bool> &stop, Show show,
    const Task &task, const QString &folder)
    : m_service(service)
    , m_stop(stop)
    , m_task(task)
    , m_calls(service, &stop)
    , m_objects(folder, m_calls, std::move(show))
{ }

bool ServiceSide::fetch()
{
    for (const QString &study : m_task.studies) {
        const WebFailure failure = m_objects.fetch(study, m_task.report.detail);
        if (failure.problem == WebProblem::Conflict && isBarred(study)) {
            return m_task.report.fail(End::SameStudyThere);
        }
        if (!failure.isNone()) {
            return m_task.report.fail(End::Failed, failure);
        }
    }
    noteObjects();
    return true;
}

void ServiceSide::recall(const QJsonArray &objects)
{
    m_objects.read(objects);
    noteObjects();
}

void ServiceSide::noteObjects()
{
    m_task.report.objects = m_objects.objects().size();
    m_task.report.studies = m_objects.studies();
    const PatientChanges &changes = m_task.request.index.changes;
    for (const ServiceObject &object : m_objects.objects()) {
        for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
            if (!PatientValues::isSame(change.key(), object.before[change.key()], change.value())) {
                m_task.report.inService.insert(change.key());
            }
        }
    }
}

bool ServiceSide::makeCopies()
{
    if (!mayChangeId()) {
        return false;
    }
    CorrectionReport &report = m_task.report;
    report.detail = m_objects.write(m_task.request.index.changes, m_stop);
    if (m_stop) {
        return report.fail(End::Stopped);
    }
    return (report.detail.isEmpty() && m_objects.sync()) || report.fail(End::Failed);
}

bool ServiceSide::changesId() const
{
    return m_task.report.inService.contains(PatientField::Id);
}

/// What an archive would keep twice is not stored where it is there already.
bool ServiceSide::mayChangeId()
{
    WebFailure failure;
    if (!findCopies(failure)) {
        return failure.isNone() || m_task.report.fail(End::Failed, failure);
    }
    for (const QString &study : m_task.studies) {
        const bool isKept = isThere(*m_copies, study, failure);
        if (isKept || !failure.isNone()) {
            return m_task.report.fail(isKept ? End::SameStudyThere : End::Failed, failure);
        }
    }
    return true;
}

/// Whether a study that the archive has twice is one that it has under the new ID, too.
bool ServiceSide::isBarred(const QString &study) const
{
    StudyCopies copies(m_service, &m_stop);
    WebFailure unknown;
    return m_task.request.index.changes.contains(PatientField::Id) && copies.isOffered(unknown)
        && isThere(copies, study, unknown);
}

/// Where the ID changes. @return whether the archive can be asked for its copies. @param unknown why that is
/// not known
bool ServiceSide::findCopies(WebFailure &unknown)
{
    m_copies.reset();
    if (changesId()) {
        auto copies = std::make_unique<StudyCopies>(m_service, &m_stop);
        if (copies->isOffered(unknown)) {
            m_copies = std::move(copies);
        }
    }
    return m_copies != nullptr;
}

/// Whether the archive has a study under the new ID.
bool ServiceSide::isThere(StudyCopies &copies, const QString &study, WebFailure &failure) const
{
    QVector<StudyCopy> found;
    failure = copies.find(study, found);
    const QString newId = m_task.request.index.changes[PatientField::Id];
    return failure.isNone() && std::any_of(found.cbegin(), found.cend(), [&](const StudyCopy &copy) {
        return copy.patientId == newId;
    });
}

void ServiceSide::goOnRegardless()
{
    m_calls.goOnRegardless();
    if (m_copies) {
        m_copies->goOnRegardless();
    }
}

bool ServiceSide::store()
{
    WebFailure failure;
    if (changesId() && !m_copies) {
        failure = m_objects.storeFirst();
        if (failure.isNone() && isDoubled()) {
            return m_task.report.fail(End::Doubled);
        }
    }
    if (failure.isNone()) {
        failure = ServiceCalls::repeated([this] { return m_objects.storeNew(); });
    }
    m_task.report.failure = failure;
    if (!failure.isNone() || (m_copies && !removeCopies(true))) {
        undo();
        return false;
    }
    return true;
}

bool ServiceSide::isDoubled()
{
    int listed = 0;
    return m_objects.countStudies(m_objects.objects().constFirst().studyUid, listed).isNone() && listed > 1;
}

/// Removes what is left under the old ID once all is there under the new one, or the other way round.
bool ServiceSide::removeCopies(bool ofOld)
{
    const QString newId = m_task.request.index.changes[PatientField::Id];
    const auto isToStay = [&](const StudyCopy &copy) { return (copy.patientId == newId) == ofOld; };
    for (const QString &study : m_task.studies) {
        const WebFailure failure = m_copies->keepOnly(study, m_objects.objectsOf(study), isToStay);
        if (!failure.isNone()) {
            WebFailure &told = m_task.report.failure;
            told = told.isNone() ? failure : told;
            return false;
        }
    }
    return true;
}

ServiceSide::Holds ServiceSide::look()
{
    Holds holds = Holds::Unknown;
    m_task.report.failure =
        ServiceCalls::repeated([&] { return m_objects.look(m_task.request.index.changes, holds); });
    return holds;
}

void ServiceSide::undo()
{
    WebFailure failure = ServiceCalls::repeated([this] { return m_objects.storeOld(); });
    const bool isOne = failure.isNone() && (!m_copies || removeCopies(false));
    Holds holds = Holds::Unknown;
    if (isOne) {
        failure = ServiceCalls::repeated([&] { return m_objects.look(m_task.request.index.changes, holds); });
    }
    m_task.report.end = holds == Holds::Old ? End::Undone : End::UndoPending;
    if (m_task.report.failure.isNone()) {
        m_task.report.failure = failure;
    }
}

void ServiceSide::undoBegun()
{
    WebFailure unknown;
    if (!findCopies(unknown) && !unknown.isNone()) {
        m_task.report.end = End::UndoPending;
        m_task.report.failure = unknown;
        return;
    }
    undo();
}
