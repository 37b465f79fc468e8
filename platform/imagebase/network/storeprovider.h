#pragma once

#include "imagebase_export.h"

#include <QString>

class ObjectSpool;
class ReceiveJournal;
class SpoolIndexer;
struct T_ASC_Association;
struct T_DIMSE_C_StoreRQ;

/**
 * Answers the C-STORE requests of an association, whoever asked for it: writes the object as it comes into
 * the spool, has it read, and acknowledges it only once it is kept; then the indexer gets it. Shared by
 * associations on any threads; each call serves one.
 */
class IMAGEBASE_EXPORT StoreProvider
{
public:
    /// All outlive the provider.
    StoreProvider(ObjectSpool &spool, SpoolIndexer &indexer, ReceiveJournal &journal);

    /// How long a peer may be silent in the middle of an object.
    static constexpr int silenceSeconds = 30;

    enum class Outcome {
        Kept, ///< acknowledged with success
        Refused, ///< answered with a failure; the journal has the reason
        Broken ///< the association is of no use any more
    };
    /// Takes the data of a request that has been received over a context of the association, and answers.
    /// @param peer its AE title, for the journal and the file
    Outcome serve(T_ASC_Association *association, int context, const T_DIMSE_C_StoreRQ &request,
        const QString &peer) const;

    ReceiveJournal &journal() const { return m_journal; }

private:
    ObjectSpool &m_spool;
    SpoolIndexer &m_indexer;
    ReceiveJournal &m_journal;
};
