#include "uploadjobs.h"

#include "uploadrecords.h"
#include "uploadsituation.h"

#include <utility>

UploadJobs::UploadJobs(const UploadSituation &situation, UploadRecords &records, QObject *parent)
    : QObject(parent)
    , m_situation(situation)
    , m_records(records)
{ }

UploadJobs::Job UploadJobs::add(const UploadOrder &order)
{
    auto job = std::make_shared<UploadJob>(order.id, order.service, order.files.size());
    m_jobs.insert(order.id, job);
    m_records.write([order](UploadStore &store) { return store.add(order); });
    return job;
}

/// None for what is only still in the index.
UploadJobs::Job UploadJobs::jobOf(const UploadRow &row)
{
    if (m_leaving.contains(row.id) && !m_jobs.contains(row.id)) {
        return {};
    }
    Job &job = m_jobs[row.id];
    if (!job) { // of an earlier run, or of another program
        job = std::make_shared<UploadJob>(row.id, row.service, row.files);
        job->isRunTold = row.waiting() == 0;
    }
    return job;
}

void UploadJobs::takeRows(const QVector<UploadRow> &rows)
{
    QSet<qint64> present;
    for (const UploadRow &row : rows) {
        present.insert(row.id);
        if (const Job job = jobOf(row)) {
            job->setRow(row);
            endIfOver(job);
        }
    }
    const QMap<qint64, Job> jobs = m_jobs;
    for (const Job &job : jobs) {
        if (job->isEntered() && !present.contains(job->id())) {
            end(job->id()); // by another program, or at our wish
        }
    }
}

void UploadJobs::forget(const QVector<UploadOutcome> &outcomes)
{
    for (const UploadOutcome &outcome : outcomes) {
        if (const Job job = of(outcome.task)) {
            job->forget(outcome, m_situation.nowMs());
        }
    }
}

void UploadJobs::noteChange()
{
    for (const Job &job : qAsConst(m_jobs)) {
        job->isChanged = true;
    }
}

void UploadJobs::endIfOver(const Job &job)
{
    if (!job->isOver() || job->isCancelled) {
        return;
    }
    if (!std::exchange(job->isRunTold, true)) {
        emit runEnded(job->id());
    }
    if (job->row().failed == 0 && m_situation.isOwner()) {
        job->isCancelled = true; // nothing more is to be done with it
        remove(job->id());
    }
}

/// Until the index has let it go, its row there is not taken for an upload to be gone on with.
void UploadJobs::remove(qint64 task)
{
    m_leaving.insert(task);
    m_records.write([task](UploadStore &store) { return store.remove(task); },
        [this, task] {
            m_leaving.remove(task);
            end(task);
        });
}

void UploadJobs::end(qint64 task)
{
    if (m_jobs.remove(task) > 0) {
        emit ended(task);
    }
}
