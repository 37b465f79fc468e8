#pragma once

#include "sendstore.h"

/// The paths of the jobs that nobody has looked at; for the thread of its store.
class SendPaths
{
public:
    explicit SendPaths(SendStore &store)
        : m_store(store)
    { }

    /// Paths as a job's row keeps them; none may be empty or have a zero in it.
    static QByteArray toBytes(const QStringList &paths);

    /// The oldest job with such paths, that is not cancelled; 0 where there is none.
    qint64 job();
    /// @return false where they cannot be read
    bool read(qint64 job, QStringList &paths);

    /// What a look at some of them has found.
    struct Listed
    {
        QVector<SendObject> objects;
        int paths = 0; ///< how many were looked at, from the first on
        int skippedFolders = 0;
        int skippedFiles = 0;
    };
    bool add(qint64 job, const Listed &listed);
    /// All have been looked at; where the job counts more they are no paths, and skipped.
    bool end(qint64 job);

private:
    SendStore &m_store;
};
