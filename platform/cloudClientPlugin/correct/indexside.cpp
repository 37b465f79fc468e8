#include "indexside.h"

#include "indexconnection.h"

using End = CorrectionReport::End;
using Problem = IndexCorrectionResult::Problem;

IndexSide::IndexSide(const CorrectionRequest &request, CorrectionReport &report)
    : m_request(request)
    , m_report(report)
{ }

bool IndexSide::isOpen(const IndexConnection &connection)
{
    if (!connection.isOpen()) {
        m_report.index.problem = Problem::Database;
        m_report.index.error = QSqlError(connection.failure().detail);
        m_report.end = End::Failed;
    }
    return connection.isOpen();
}

QStringList IndexSide::studies()
{
    const IndexCorrection &asked = m_request.index;
    if (asked.scope == IndexCorrection::Scope::Study) {
        return {asked.studyUid};
    }
    const IndexConnection connection(m_request.databasePath);
    if (!isOpen(connection)) {
        return {};
    }
    const IndexedPatient patient = indexedPatientOf(connection.database(), asked.studyPk, asked.studyUid);
    if (!patient.isFound) {
        m_report.index.problem = Problem::NotFound;
        m_report.end = End::Failed;
    }
    return patient.studyUids;
}

void IndexSide::correct()
{
    const IndexConnection connection(m_request.databasePath);
    if (!isOpen(connection)) {
        return;
    }
    const IndexCorrection &asked = m_request.index;
    const IndexedPatient before = indexedPatientOf(connection.database(), asked.studyPk, asked.studyUid);
    m_report.index = correctIndex(connection.database(), asked);
    m_report.end = m_report.index.isGood() ? End::Done : End::Failed;
    for (auto change = asked.changes.cbegin(); change != asked.changes.cend(); ++change) {
        if (!PatientValues::isSame(change.key(), before.values[change.key()], change.value())) {
            m_report.inIndex.insert(change.key());
        }
    }
}

void IndexSide::correctFiles(
    const QStringList &studies, const std::function<bool(const CorrectionProgress &)> &goOn)
{
    const IndexConnection connection(m_request.databasePath);
    if (connection.isOpen()) {
        m_report.files = correctCopies(connection.database(), m_report.index.patientPk, studies,
            m_request.index.changes, [&](int done, int all) {
                return goOn({CorrectionProgress::Step::CorrectingCopies, done, all});
            });
    }
}
