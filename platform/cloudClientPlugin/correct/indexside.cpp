#include "indexside.h"

#include "databaseerror.h"
#include "indexconnection.h"

#include <QElapsedTimer>

#include <algorithm>

namespace {

using End = CorrectionReport::End;
using Problem = IndexCorrectionResult::Problem;

/// How long one attempt waits for a lock: whoever wants the end waits no longer.
constexpr int attemptMs = 100;

} // namespace

IndexSide::IndexSide(
    const CorrectionRequest &request, CorrectionReport &report, std::function<bool()> isStopped)
    : m_request(request)
    , m_report(report)
    , m_isStopped(std::move(isStopped))
{ }

/// @param work is called again while somebody else holds the index
ConnectionFailure IndexSide::tryIndex(const std::function<QSqlError(const QSqlDatabase &)> &work) const
{
    const auto attempt = [&] {
        const IndexConnection connection(m_request.databasePath, attemptMs);
        const QSqlError error = connection.isOpen() ? work(connection.database()) : QSqlError();
        return error.isValid() ? connectionFailureOf(error, m_request.databasePath) : connection.failure();
    };
    QElapsedTimer waited;
    waited.start();
    ConnectionFailure failure = attempt();
    while (failure.reason == ConnectionFailure::Reason::Locked && !m_isStopped()
        && waited.elapsed() < IndexConnection::lockWaitMs) {
        failure = attempt();
    }
    return failure;
}

void IndexSide::withIndex(const std::function<QSqlError(const QSqlDatabase &)> &work)
{
    const ConnectionFailure failure = tryIndex(work);
    if (failure.reason != ConnectionFailure::Reason::None) {
        m_report.index.problem = Problem::Database;
        m_report.index.error = QSqlError(failure.detail);
        m_report.end = m_isStopped() ? End::Stopped : End::Failed;
    }
}

IndexedPatient IndexSide::patient()
{
    const IndexCorrection &asked = m_request.index;
    IndexedPatient patient;
    withIndex([&](const QSqlDatabase &db) {
        QSqlError error;
        patient = indexedPatientOf(db, asked.studyPk, asked.studyUid, &error);
        return error;
    });
    return patient;
}

QStringList IndexSide::studies()
{
    if (m_request.index.scope == IndexCorrection::Scope::Study) {
        return {m_request.index.studyUid};
    }
    const IndexedPatient found = patient();
    if (!found.isFound && m_report.index.isGood()) {
        m_report.index.problem = Problem::NotFound;
        m_report.end = End::Failed;
    }
    return found.studyUids;
}

bool IndexSide::holdsNew()
{
    const PatientChanges &changes = m_request.index.changes;
    const IndexedPatient found = patient();
    const auto isNew = [&](PatientField field) {
        return PatientValues::isSame(field, found.values[field], changes[field]);
    };
    return found.isFound && std::all_of(changes.keyBegin(), changes.keyEnd(), isNew);
}

void IndexSide::correct()
{
    const IndexCorrection &asked = m_request.index;
    IndexedPatient before;
    withIndex([&](const QSqlDatabase &db) {
        QSqlError error;
        before = indexedPatientOf(db, asked.studyPk, asked.studyUid, &error);
        if (error.isValid()) {
            return error;
        }
        m_report.index = correctIndex(db, asked);
        m_report.end = m_report.index.isGood() ? End::Done : End::Failed;
        return m_report.index.error;
    });
    for (auto change = asked.changes.cbegin(); change != asked.changes.cend(); ++change) {
        if (!PatientValues::isSame(change.key(), before.values[change.key()], change.value())) {
            m_report.inIndex.insert(change.key());
        }
    }
}

void IndexSide::correctFiles(
    const QStringList &studies, const std::function<bool(const CorrectionProgress &)> &goOn)
{
    const ConnectionFailure failure = tryIndex([&](const QSqlDatabase &db) {
        m_report.files = correctCopies(
            db, m_report.index.patientPk, studies, m_request.index.changes, [&](int done, int all) {
                return goOn({CorrectionProgress::Step::CorrectingCopies, done, all});
            });
        return QSqlError();
    });
    m_report.files.isStopped |= failure.reason != ConnectionFailure::Reason::None;
}
