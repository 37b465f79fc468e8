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
    } else if (m_journal->write({State::Stored, {}, request, m_studies, {}}) || m_report.fail(End::Failed)) {
        correctTheIndex();
    }
    correctTheFiles(false);
    if (m_report.end != End::UndoPending) {
        m_journal->remove();
    }
    return m_report;
}

bool StudyCorrection::begin(const CorrectionRequest &request)
{
    m_request = request;
    m_report = {};
    m_report.changes = request.index.changes;
    m_studies = IndexSide(m_request, m_report).studies();
    if (m_studies.isEmpty()) {
        return false;
    }
    // An undoing that came later would take this correction back as well.
    const bool isHalf = request.inService
        && CorrectionJournal::isHalfStored(request.databasePath, m_service.address, m_studies);
    return !isHalf || m_report.fail(End::EarlierPending);
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
    return m_journal->setState(State::Storing) || m_report.fail(End::Failed);
}

/// What the service shows decides, not what it answered.
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
    if (holds != Holds::New || !m_journal->setState(State::Stored)) {
        m_serviceSide->undo();
        return;
    }
    correctTheIndex();
    if (!m_report.index.isGood()) {
        m_serviceSide->dropCopies(); // where the disk is full, the journal needs the room
        m_journal->setState(State::Storing);
        m_serviceSide->undo();
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
    makeServiceSide();
    m_serviceSide->recall(content.objects);
    if (content.state == State::Storing) {
        m_serviceSide->undoBegun();
    } else {
        correctTheIndex(); // once more changes nothing
        correctTheFiles(true);
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
