#pragma once

#include "attributes.h"
#include "queryrecord.h"
#include "scuassociation.h"

#include <QVector>

#include <memory>

/// What is asked of an archive.
struct QueryRequest
{
    RecordLevel level = RecordLevel::Study;
    /// Values to match, and the attributes wanted in the answers. Empty ones match everything.
    QueryRecord keys;
    /// The archive is asked to end after so many answers.
    int limit = 1000;
};

/// What came back. Answers that came before a failure are there.
struct QueryResult
{
    NetworkFailure failure; ///< Stopped after cancel() too
    quint16 status = 0; ///< the archive's own word where it refused; 0 otherwise
    bool isCutOff = false; ///< the limit was reached, so there may be more
    QVector<QueryRecord> records;

    bool isGood() const { return failure.isNone() && status == 0; }
};

/**
 * Asks an archive for its patients, studies, series or images (C-FIND). Patients are asked for in the patient
 * root model, all else in the study root model or where the archive has only the other, in that: there,
 * studies are known only below one patient, whose ID is to be a key.
 *
 * The association stays open from one query to the next until the object goes. Blocks the thread that it is
 * used on, which may ask several times; an answer is bounded in size and number, whatever the archive sends.
 */
class IMAGEBASE_EXPORT QueryScu
{
public:
    explicit QueryScu(const DicomNode &node, const ScuOptions &options = {});
    ~QueryScu();

    /// Makes the association where it is not open; find() does so, too.
    NetworkFailure open();
    /// Fails with NoContext where the archive does not offer the model; others may still be asked for then.
    QueryResult find(const QueryRequest &request);
    /// Whether the open association has the study root model.
    bool hasStudyRoot() const;
    /// Any thread: asks the archive to end the query that runs; for good.
    void cancel();
    /// Any thread: find() ends within milliseconds; for good.
    void abort();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

/// The word for a level in queries: "PATIENT", "STUDY", "SERIES", "IMAGE".
IMAGEBASE_EXPORT QString queryLevelName(RecordLevel level);
