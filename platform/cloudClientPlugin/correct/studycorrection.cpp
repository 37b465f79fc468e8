#include "studycorrection.h"

#include "correctionjournal.h"
#include "indexside.h"
#include "serviceobjects.h"
#include "studycopies.h"
#include "studysearch.h"

#include <algorithm>

namespace {

using End = CorrectionReport::End;
using Holds = ServiceObjects::Holds;
using State = CorrectionJournal::State;

} // namespace

StudyCorrection::StudyCorrection(WebService service, const std::atomic<bool> &stop, Show show)
    : m_service(std::move(service))
    , m_stop(stop)
    , m_show(std::move(show))
{ }

StudyCorrection::~StudyCorrection() = default;

bool StudyCorrection::fail(End end, const WebFailure &failure)
{
    m_report.end = failure.problem == WebProblem::Stopped ? End::Stopped : end;
    m_report.failure = failure;
    return false;
}

CorrectionReport StudyCorrection::run(const CorrectionRequest &request)
{
    m_request = request;
    m_report = {};
    m_report.changes = request.index.changes;
    m_studies = IndexSide(m_request, m_report).studies();
    if (m_studies.isEmpty() || (request.inService && !isNoneToUndo())) {
        return m_report;
    }
    if (!openJournal(request) || (request.inService && (!fetch() || !prepare(request)))) {
        m_journal->remove();
        return m_report;
    }
    if (!m_report.inService.isEmpty()) {
        if (storeAll()) {
            check();
        }
    } else if (m_journal->write({State::Stored, {}, request, m_studies, {}}) || fail(End::Failed)) {
        correctTheIndex();
    }
    correctTheFiles(false);
    if (m_report.end != End::UndoPending) {
        m_journal->remove();
    }
    return m_report;
}

/// An undoing that came later would take this correction back as well.
bool StudyCorrection::isNoneToUndo()
{
    return !CorrectionJournal::isHalfStored(m_request.databasePath, m_service.address, m_studies)
        || fail(End::EarlierPending);
}

bool StudyCorrection::openJournal(const CorrectionRequest &request)
{
    m_journal = std::make_unique<CorrectionJournal>(request.databasePath);
    if (!m_journal->isOpen()) {
        m_report.detail = m_journal->folder();
        return fail(End::Failed);
    }
    return true;
}

bool StudyCorrection::fetch()
{
    m_calls = std::make_unique<ServiceCalls>(m_service, &m_stop);
    m_objects = std::make_unique<ServiceObjects>(m_journal->folder(), *m_calls, m_show);
    for (const QString &study : qAsConst(m_studies)) {
        const WebFailure failure = m_objects->fetch(study, m_report.detail);
        if (!failure.isNone()) {
            return fail(End::Failed, failure);
        }
    }
    m_report.objects = m_objects->objects().size();
    m_report.studies = m_objects->studies();
    return true;
}

bool StudyCorrection::prepare(const CorrectionRequest &request)
{
    noteDifferences();
    if (m_report.inService.isEmpty()) {
        return true;
    }
    if (!mayChangeId()) {
        return false;
    }
    m_report.detail = m_objects->write(request.index.changes, m_stop);
    if (m_stop) {
        return fail(End::Stopped);
    }
    const auto write = [&] {
        return m_journal->write(
            {State::Prepared, m_service.address, request, m_studies, m_objects->toJson()});
    };
    if (!m_report.detail.isEmpty() || !m_objects->sync() || !write()) {
        return fail(End::Failed);
    }
    m_calls->goOnRegardless();
    if (m_copies) {
        m_copies->goOnRegardless();
    }
    return m_journal->setState(State::Storing) || fail(End::Failed);
}

void StudyCorrection::noteDifferences()
{
    const PatientChanges &changes = m_request.index.changes;
    for (const ServiceObject &object : m_objects->objects()) {
        for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
            if (!PatientValues::isSame(change.key(), object.before[change.key()], change.value())) {
                m_report.inService.insert(change.key());
            }
        }
    }
}

/// What an archive would keep twice is not stored where it is there already.
bool StudyCorrection::mayChangeId()
{
    m_copies.reset();
    if (!m_report.inService.contains(PatientField::Id)) {
        return true;
    }
    auto copies = std::make_unique<StudyCopies>(m_service, &m_stop);
    WebFailure unknown;
    if (!copies->isOffered(unknown)) {
        return unknown.isNone() || fail(End::Failed, unknown);
    }
    m_copies = std::move(copies);
    for (const QString &study : qAsConst(m_studies)) {
        QVector<StudyCopy> found;
        const WebFailure failure = m_copies->find(study, found);
        if (!failure.isNone()) {
            return fail(End::Failed, failure);
        }
        const bool isThere = std::any_of(found.cbegin(), found.cend(), [this](const StudyCopy &copy) {
            return copy.patientId == m_request.index.changes[PatientField::Id];
        });
        if (isThere) {
            return fail(End::SameStudyThere);
        }
    }
    return true;
}

bool StudyCorrection::storeAll()
{
    WebFailure failure;
    if (m_report.inService.contains(PatientField::Id) && !m_copies) {
        failure = m_objects->storeFirst();
        if (failure.isNone() && isDoubled()) {
            return fail(End::Doubled);
        }
    }
    if (failure.isNone()) {
        failure = ServiceCalls::repeated([this] { return m_objects->storeNew(); });
    }
    m_report.failure = failure;
    if (!failure.isNone() || (m_copies && !removeCopies(true))) {
        undo();
        return false;
    }
    return true;
}

bool StudyCorrection::isDoubled()
{
    StudyQuestion question;
    question.studyUid = m_objects->objects().constFirst().studyUid;
    QVector<DicomJson> found;
    return m_calls->search(QStringLiteral("studies"), question.query(), found).isNone() && found.size() > 1;
}

/// Removes what is left under the old ID once all is there under the new one, or the other way round.
bool StudyCorrection::removeCopies(bool ofOld)
{
    const QString newId = m_request.index.changes[PatientField::Id];
    const auto isToStay = [&](const StudyCopy &copy) { return (copy.patientId == newId) == ofOld; };
    for (const QString &study : qAsConst(m_studies)) {
        const WebFailure failure = m_copies->keepOnly(study, m_objects->objectsOf(study), isToStay);
        if (!failure.isNone()) {
            m_report.failure = m_report.failure.isNone() ? failure : m_report.failure;
            return false;
        }
    }
    return true;
}

/// What the service shows decides, not what it answered.
void StudyCorrection::check()
{
    Holds holds = Holds::Unknown;
    m_report.failure =
        ServiceCalls::repeated([&] { return m_objects->look(m_request.index.changes, holds); });
    if (m_report.failure.isNone() && holds == Holds::Old) {
        m_report.end = End::KeptOld;
        return;
    }
    if (!m_report.failure.isNone() || holds != Holds::New || !m_journal->setState(State::Stored)) {
        undo();
        return;
    }
    correctTheIndex();
    if (!m_report.index.isGood()) {
        m_journal->setState(State::Storing);
        undo();
    }
}

void StudyCorrection::undo()
{
    WebFailure failure = ServiceCalls::repeated([this] { return m_objects->storeOld(); });
    const bool isOne = failure.isNone() && (!m_copies || removeCopies(false));
    Holds holds = Holds::Unknown;
    if (isOne) {
        failure = ServiceCalls::repeated([&] { return m_objects->look(m_request.index.changes, holds); });
    }
    m_report.end = holds == Holds::Old ? End::Undone : End::UndoPending;
    if (m_report.failure.isNone()) {
        m_report.failure = failure;
    }
}

void StudyCorrection::correctTheIndex()
{
    IndexSide(m_request, m_report).correct();
}

/// The last step, and the one that cannot be missed: an upload would bring the old values back.
void StudyCorrection::correctTheFiles(bool heedsStop)
{
    if (m_report.end == End::Done) {
        m_journal->setState(State::Indexed);
        IndexSide(m_request, m_report).correctFiles(m_studies, [&](const CorrectionProgress &progress) {
            m_show(progress);
            return !heedsStop || !m_stop;
        });
    }
}

/// What the journal says: the rest of it, or back to what was.
void StudyCorrection::finish()
{
    const CorrectionJournal::Content &content = m_journal->content();
    m_request = content.request;
    m_studies = content.studies;
    m_report = {};
    m_report.changes = m_request.index.changes;
    m_calls = std::make_unique<ServiceCalls>(m_service, &m_stop);
    m_objects = std::make_unique<ServiceObjects>(m_journal->folder(), *m_calls, m_show);
    m_objects->read(content.objects);
    m_report.objects = m_objects->objects().size();
    m_report.studies = m_objects->studies();
    noteDifferences();
    if (content.state != State::Storing) {
        correctTheIndex(); // once more changes nothing
        correctTheFiles(true);
        return;
    }
    m_copies.reset();
    if (m_report.inService.contains(PatientField::Id)) {
        auto copies = std::make_unique<StudyCopies>(m_service, &m_stop);
        WebFailure unknown;
        if (copies->isOffered(unknown)) {
            m_copies = std::move(copies);
        } else if (!unknown.isNone()) {
            m_report.end = End::UndoPending;
            m_report.failure = unknown;
            return;
        }
    }
    undo();
}

bool StudyCorrection::isOver() const
{
    return m_report.end != End::UndoPending && !m_report.files.isStopped
        && m_report.index.problem != IndexCorrectionResult::Problem::Database;
}

QVector<CorrectionReport> StudyCorrection::finishBegun(const QString &databasePath)
{
    QVector<CorrectionReport> reports;
    for (auto &journal : CorrectionJournal::leftBehind(databasePath, m_service.address)) {
        if (m_stop) {
            break;
        }
        m_journal = std::move(journal);
        if (m_journal->content().state == State::Prepared) {
            m_journal->remove();
            continue;
        }
        finish();
        if (isOver()) {
            m_journal->remove();
        } else if (m_stop) {
            break;
        }
        reports.append(m_report);
    }
    m_journal.reset();
    return reports;
}
