#include "studycorrection.h"

#include "correctionjournal.h"
#include "indexside.h"
#include "serviceside.h"

namespace {

using End = CorrectionReport::End;
using Holds = ServiceSide::Holds;
using State = CorrectionJournal::State;

} // namespace

StudyCorrection::StudyCorrection(WebService service, const std::atomic<bool> &stop, Show show)
    : m_service(std::move(service))
    , m_stop(stop)
    , m_show(std::move(show))
{ }

StudyCorrection::~StudyCorrection() = default;

CorrectionReport StudyCorrection::run(const CorrectionRequest &request)
{
    if (!begin(request) || !openJournal()) {
        return m_report;
    }
    if (request.inService && !prepare()) {
        m_journal->remove();
        return m_report;
    }
    if (!m_report.inService.isEmpty()) {
        correctTheService();
    } else if ((m_journal->write({State::IndexAlone, {}, request, m_studies, {}})
                   || m_report.fail(End::Failed))
        && isAlone()) {
        indexSide(true).correct();
    }
    correctTheFiles(false);
    m_report.isLeft = m_report.end == End::UndoPending || m_report.files.isStopped;
    if (!m_report.isLeft) {
        m_journal->remove();
    }
    return m_report;
}

bool StudyCorrection::begin(const CorrectionRequest &request)
{
    m_journal.reset();
    m_request = request;
    m_report = {};
    m_report.changes = request.index.changes;
    if (m_stop) {
        return m_report.fail(End::Stopped);
    }
    m_studies = indexSide(true).studies();
    return !m_studies.isEmpty() && isAlone();
}

/// An earlier one that were undone, or finished, later would take this correction back. Asked for again once
/// the own journal says that this has begun: of two at a time at least one sees the other.
bool StudyCorrection::isAlone()
{
    const QUrl service = m_request.inService ? m_service.address : QUrl();
    const QString own = m_journal ? m_journal->folder() : QString();
    return !CorrectionJournal::isPending(m_request.databasePath, service, m_studies, own)
        || m_report.fail(End::EarlierPending);
}

bool StudyCorrection::openJournal()
{
    m_journal = std::make_unique<CorrectionJournal>(m_request.databasePath);
    if (!m_journal->isOpen()) {
        m_report.detail = m_journal->folder();
        m_journal->remove();
        return m_report.fail(End::Failed);
    }
    return true;
}

void StudyCorrection::makeServiceSide()
{
    m_serviceSide = std::make_unique<ServiceSide>(
        m_service, m_stop, m_show, ServiceSide::Task{m_request, m_studies, m_report}, m_journal->folder());
}

/// Up to where the first object may be stored, if one is to be.
bool StudyCorrection::prepare()
{
    makeServiceSide();
    if (!m_serviceSide->fetch()) {
        return false;
    }
    if (m_report.inService.isEmpty()) {
        return true;
    }
    if (!m_serviceSide->makeCopies()) {
        return false;
    }
    if (!m_journal->write(
            {State::Prepared, m_service.address, m_request, m_studies, m_serviceSide->toJson()})) {
        return m_report.fail(End::Failed);
    }
    m_serviceSide->goOnRegardless();
    return (m_journal->setState(State::Storing) || m_report.fail(End::Failed)) && isAlone();
}

/// What the service shows decides, not what it answered. The journal says that the service may hold half of
/// it until the index is right: whatever cannot be written then, the way back is open.
void StudyCorrection::correctTheService()
{
    if (!m_serviceSide->store()) {
        return;
    }
    const Holds holds = m_serviceSide->look();
    if (holds == Holds::Old) {
        m_report.end = End::KeptOld;
        return;
    }
    if (holds == Holds::New) {
        indexSide(false).correct();
    }
    if (m_report.end != End::Done) {
        m_serviceSide->undo();
    }
}

/// @param heedsStop whether a wish to stop ends the wait for an index that somebody else holds
IndexSide StudyCorrection::indexSide(bool heedsStop)
{
    return {m_request, m_report, [this, heedsStop] { return heedsStop && m_stop; }};
}

/// The last step, and the one that cannot be missed: an upload would bring the old values back.
void StudyCorrection::correctTheFiles(bool heedsStop)
{
    if (m_report.end == End::Done) {
        m_journal->setState(State::Indexed);
        indexSide(heedsStop).correctFiles(m_studies, [&](const CorrectionProgress &progress) {
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
    if (content.service.isEmpty() || content.state == State::Indexed) {
        indexSide(true).correct(); // once more changes nothing
        correctTheFiles(true);
    } else {
        finishInService();
    }
}

/// Where the index has followed, the kill came before the journal could say so. But it may have had the new
/// values all the time: then the service shows whether it holds them all, or can.
void StudyCorrection::finishInService()
{
    makeServiceSide();
    m_serviceSide->recall(m_journal->content().objects);
    const bool isIndexed = indexSide(true).holdsNew();
    if (!m_report.index.isGood()) {
        return;
    }
    const Holds holds = isIndexed ? m_serviceSide->lookAtBegun() : Holds::Old;
    if (isIndexed && holds == Holds::New) {
        indexSide(true).correct();
        correctTheFiles(true);
    } else if (holds == Holds::Unknown) {
        m_report.end = End::UndoPending;
    } else {
        m_serviceSide->undoBegun();
    }
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
        m_report.isLeft = !isOver();
        if (!m_report.isLeft) {
            m_journal->remove();
        } else if (m_stop) {
            break;
        }
        reports.append(m_report);
    }
    m_journal.reset();
    return reports;
}
