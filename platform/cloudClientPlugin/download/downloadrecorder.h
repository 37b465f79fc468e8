#pragma once

#include "askedseries.h"
#include "spoolfollower.h"

#include <QHash>

#include <functional>
#include <mutex>

/**
 * Notes, with the records of downloaded objects and in one transaction with them, that the cloud has these
 * objects already: their flag, from which the counters of their series follow, and what their download has
 * received. Only objects of the series that they were asked for come in.
 */
class DownloadRecorder : public SpoolFollower
{
public:
    using Committed = std::function<void(const QVector<SpooledObject> &objects)>;
    /// @param onCommitted called on the indexer's thread
    explicit DownloadRecorder(Committed onCommitted);

    /// The series that an object of the spool was asked for, before the indexer has it. Any thread.
    void expect(const QByteArray &path, const AskedSeries &series);
    /// No object waits any more. Any thread.
    void forget();

    bool accepts(const QSqlDatabase &db, const SpooledObject &object) override;
    bool record(const QSqlDatabase &db, const QVector<SpooledObject> &objects) override;
    void committed(const QVector<SpooledObject> &objects) override;

private:
    const Committed m_onCommitted;
    std::mutex m_mutex;
    QHash<QByteArray, AskedSeries> m_expected; ///< by path
};
