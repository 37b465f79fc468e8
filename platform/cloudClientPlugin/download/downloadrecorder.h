#pragma once

#include "spoolfollower.h"

#include <functional>

/**
 * Notes, with the records of downloaded objects and in one transaction with them, that the cloud has these
 * objects already: their flag, from which the counters of their series follow, and what their download has
 * received.
 */
class DownloadRecorder : public SpoolFollower
{
public:
    using Committed = std::function<void(const QVector<SpooledObject> &objects)>;
    /// @param onCommitted called on the indexer's thread
    explicit DownloadRecorder(Committed onCommitted);

    bool record(const QSqlDatabase &db, const QVector<SpooledObject> &objects) override;
    void committed(const QVector<SpooledObject> &objects) override { m_onCommitted(objects); }

private:
    const Committed m_onCommitted;
};
