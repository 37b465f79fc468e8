#pragma once

#include "keptstatement.h"
#include "uploadrow.h"

class TransferTables;

/// Writes into the index what became of the files of uploads, and flags the images that the service has. For
/// one thread and one connection, inside a transaction of the caller's.
class UploadOutcomes
{
public:
    /// @param tables must outlive it
    UploadOutcomes(const QSqlDatabase &db, TransferTables &tables);

    /// What does not wait any more stays as it is; what the index has another version of by now waits again.
    /// @return false where the index refused
    bool record(const UploadOutcome &outcome);
    /// Flags all that the service has of an upload, where the index has it as it was sent. @return likewise
    bool flagStored(qint64 task);

private:
    KeptStatement m_file;
    KeptStatement m_stored;
    TransferTables &m_tables;
};
