#pragma once

#include "imagebase_export.h"
#include "importrequest.h"

#include <QByteArray>
#include <QString>

#include <memory>

class ObjectSpool;
class ReceiveJournal;
class SpoolFollower;
struct DicomReadResult;

/**
 * Brings what waits in a spool into the index, in batches, on a thread of its own: by the same writer as an
 * import, by taking the file. What cannot be written now waits and is tried again, what the index refuses is
 * kept aside; the journal tells of both. The constructor begins with what earlier programs left. Callers: any
 * thread.
 */
class IMAGEBASE_EXPORT SpoolIndexer
{
public:
    /// @param spool open; like the journal it outlives the indexer
    /// @param synced whether a record is to survive a power cut before its object leaves the spool
    /// @param follower hears of each batch; null for nobody. It outlives the indexer, too
    SpoolIndexer(const QString &databasePath, ObjectSpool &spool, ReceiveJournal &journal, bool synced = true,
        SpoolFollower *follower = nullptr);
    /// Ends within a second; what is not indexed then waits in the spool.
    ~SpoolIndexer();
    SpoolIndexer(const SpoolIndexer &) = delete;
    SpoolIndexer &operator=(const SpoolIndexer &) = delete;

    /// What is to happen from now on where other content comes under a known UID.
    void setPolicy(DuplicatePolicy policy);
    /// An object that the spool keeps. @param result what its reader found
    void add(const QByteArray &path, const DicomReadResult &result);
    /// One that nobody has read yet.
    void add(const QByteArray &path);
    /// Objects that wait.
    int waiting() const;
    /// Whether what waits cannot be written at the moment.
    bool isStuck() const;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
