#pragma once

#include "uploadjob.h"
#include "uploadorder.h"

#include <QMap>
#include <QObject>

#include <memory>

class UploadRecords;
class UploadSituation;

/**
 * The uploads that are known, as the index told of them last: those that were asked for here, of earlier runs
 * and of other programs. An upload that has nothing left to do leaves the index first, then this. For one
 * thread.
 */
class UploadJobs : public QObject
{
    Q_OBJECT

public:
    using Job = std::shared_ptr<UploadJob>;

    /// @param situation and records must outlive it
    UploadJobs(const UploadSituation &situation, UploadRecords &records, QObject *parent = nullptr);

    Job of(qint64 task) const { return m_jobs.value(task); } ///< null where there is none
    const QMap<qint64, Job> &all() const { return m_jobs; } ///< the oldest first

    /// Has it entered into the index.
    Job add(const UploadOrder &order);
    /// How all stand in the index by now.
    void takeRows(const QVector<UploadRow> &rows);
    /// The index has taken what became of these files.
    void forget(const QVector<UploadOutcome> &outcomes);
    /// All are to be told again.
    void noteChange();
    /// Tells that nothing waits any more, once a run; where nothing failed either, it leaves the index.
    void endIfOver(const Job &job);
    /// Has the index let it go; it ends behind that.
    void remove(qint64 task);
    /// Forgets it, whatever the index says.
    void end(qint64 task);

signals:
    void runEnded(qint64 task);
    void ended(qint64 task);

private:
    Job jobOf(const UploadRow &row);

    const UploadSituation &m_situation;
    UploadRecords &m_records;
    QMap<qint64, Job> m_jobs;
    QSet<qint64> m_leaving; ///< that the index has not let go yet
};
