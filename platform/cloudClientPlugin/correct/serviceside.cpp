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
    if (!m_objects.hasRoomForCopies()) {
        return report.fail(End::Failed, {WebProblem::DiskFull, {}, 0});
    }
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
    if (keepsUntold()) {
        bool isDoubled = false;
        failure = m_objects.storeFirst();
        if (failure.isNone()) {
            failure = askWhetherDoubled(isDoubled);
        }
        if (isDoubled) {
            return m_task.report.fail(End::Doubled);
        }
    }
    if (failure.isNone()) {
        failure = ServiceCalls::repeated([this] { return m_objects.storeNew(); });
    }
    if (failure.isNone() && m_copies) {
        failure = keepCopies(true);
    }
    m_task.report.failure = failure;
    if (!failure.isNone()) {
        undo();
    }
    return failure.isNone();
}

/// Whether an archive that keeps a study under either ID could not be asked for that but by DICOMweb: the
/// first object that is stored shows it.
bool ServiceSide::keepsUntold() const
{
    return changesId() && !m_copies;
}

WebFailure ServiceSide::askWhetherDoubled(bool &isDoubled)
{
    int listed = 0;
    WebFailure failure = ServiceCalls::repeated(
        [&] { return m_objects.countStudies(m_objects.objects().constFirst().studyUid, listed); });
    isDoubled = failure.isNone() && listed > 1;
    return failure;
}

/// Removes what is left under the old ID once all is there under the new one, or the other way round. What
/// came under the old ID meanwhile must not be parted from the study; what others put under the new one stays
/// there.
WebFailure ServiceSide::keepCopies(bool ofNew)
{
    const QString newId = m_task.request.index.changes[PatientField::Id];
    const auto isToStay = [&](const StudyCopy &copy) { return (copy.patientId == newId) == ofNew; };
    for (const QString &study : m_task.studies) {
        const QSet<QString> uids = m_objects.uidsOf(study);
        WebFailure failure = uids.isEmpty()
            ? WebFailure() // it was not there; what has come since is not ours
            : m_copies->keepOnly(
                study, uids, isToStay, ofNew ? StudyCopies::Others::Refuse : StudyCopies::Others::Leave);
        if (!failure.isNone()) {
            return failure;
        }
    }
    return {};
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
    CorrectionReport &report = m_task.report;
    bool isDoubled = false;
    WebFailure failure = keepsUntold() ? askWhetherDoubled(isDoubled) : WebFailure();
    if (failure.isNone() && !isDoubled) {
        failure = restore();
    }
    report.end = isDoubled ? End::Doubled : failure.isNone() ? End::Undone : End::UndoPending;
    if (report.failure.isNone()) {
        report.failure = failure;
    }
}

/// A service may refuse an object that it has, so what it shows decides, before anything is stored and after.
/// @return none where the service has what it had
WebFailure ServiceSide::restore()
{
    WebFailure before = lookForOld();
    if (before.isNone() || before.problem == WebProblem::NoRoute || before.problem == WebProblem::Stopped
        || before.problem == WebProblem::Unauthorized) {
        return before;
    }
    WebFailure refused = ServiceCalls::repeated([this] { return m_objects.storeOld(); });
    WebFailure after = lookForOld();
    return after.isNone() || refused.isNone() ? after : refused;
}

/// Where there are copies, those under the old ID were never stored over.
WebFailure ServiceSide::lookForOld()
{
    if (m_copies) {
        return keepCopies(false);
    }
    Holds holds = Holds::Unknown;
    const WebFailure failure =
        ServiceCalls::repeated([&] { return m_objects.look(m_task.request.index.changes, holds); });
    return failure.isNone() && holds != Holds::Old ? WebFailure{WebProblem::Conflict, {}, 0} : failure;
}

/// An archive that has the study under both IDs may show either, or none.
ServiceSide::Holds ServiceSide::lookAtBegun()
{
    WebFailure &failure = m_task.report.failure;
    failure = {};
    Holds holds = Holds::Unknown;
    if (findCopies(failure)) {
        failure = keepCopies(true);
    }
    if (failure.isNone()) {
        holds = look();
    }
    const bool mayPass = failure.isPassing() || failure.problem == WebProblem::Stopped
        || failure.problem == WebProblem::Unauthorized;
    return failure.isNone() || mayPass ? holds : Holds::Mixed;
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
