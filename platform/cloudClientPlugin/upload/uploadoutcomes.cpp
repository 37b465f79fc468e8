#include "uploadoutcomes.h"

#include "transfertables.h"
#include "uploadtables.h"

using namespace UploadTables;

namespace {

/// Detail is the service's own text: bounded, as it goes into the index.
QString bounded(const QString &detail)
{
    constexpr int most = 500;
    return detail.left(most);
}

} // namespace

UploadOutcomes::UploadOutcomes(const QSqlDatabase &db, TransferTables &tables)
    : m_file(db,
        QStringLiteral("UPDATE uploadfile SET State = ?, SOPInstanceUID = ?, Fault = ?, Reason = ?, "
                       "Problem = ?, Detail = ?, Tries = ?, Version = ? WHERE pk = ? AND State = ? "
                       "AND NOT EXISTS (SELECT 1 FROM imageformat WHERE SOPInstanceUID = ? AND %1 <> ?)")
            .arg(versionOfImage))
    , m_stored(db,
          QStringLiteral("SELECT SOPInstanceUID FROM uploadfile JOIN imageformat USING (SOPInstanceUID) "
                         "WHERE task_fk = ? AND State = ? AND Version = %1")
              .arg(versionOfImage))
    , m_tables(tables)
{ }

bool UploadOutcomes::record(const UploadOutcome &outcome)
{
    const UploadFile &file = outcome.file;
    const bool isStored = outcome.fault == UploadFault::Kind::None;
    if (!m_file.exec({isStored ? storedState : failedState, file.sopInstance, int(outcome.fault),
            outcome.reason, int(outcome.failure.problem), bounded(outcome.failure.detail), outcome.tries,
            file.version, file.id, waitingState, file.sopInstance, file.version})) {
        return false;
    }
    // Only the file that the index knows has told what the index knows.
    const bool isKnown = !file.version.isNull() && m_file.rowsAffected() > 0;
    return !isStored || !isKnown || m_tables.flag(file.sopInstance);
}

bool UploadOutcomes::flagStored(qint64 task)
{
    bool isGood = m_stored.exec({task, storedState});
    while (isGood && m_stored.next()) {
        isGood = m_tables.flag(m_stored.value(0).toString());
    }
    isGood = isGood && !m_stored.error().isValid();
    m_stored.finish();
    return isGood;
}
