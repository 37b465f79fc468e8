#include "uploadsender.h"

#include "uploadrecords.h"
#include "uploadsituation.h"

namespace {

constexpr int readWaitMs = 200;
constexpr int patienceMs = 60000; ///< of silence: an archive may think long about a large request

} // namespace

UploadSender::UploadSender(const QString &databasePath, UploadSituation &situation, UploadJobs &jobs,
    UploadRecords &records, QObject *parent)
    : QObject(parent)
    , m_situation(situation)
    , m_jobs(jobs)
    , m_records(records)
    , m_source(databasePath, readWaitMs)
    , m_settling(situation, m_source, records)
    , m_lines(this)
{
    connect(&m_lines, &UploadLines::came, this, &UploadSender::onCame);
}

void UploadSender::openLines()
{
    m_lines.setService(m_situation.session().service, patienceMs);
}

bool UploadSender::maySend() const
{
    const UploadHealth &health = m_situation.health();
    return m_situation.isOwner() && m_lines.count() < health.mostRequests()
        && !health.mustWait(m_situation.nowMs()) && m_records.hasRoom();
}

void UploadSender::sendOn()
{
    while (maySend()) {
        const UploadBatch batch = nextBatch();
        if (batch.isEmpty()) {
            m_situation.health().rest();
            return;
        }
        m_lines.send(batch);
    }
}

UploadBatch UploadSender::nextBatch()
{
    for (const UploadJobs::Job &job : m_jobs.all()) {
        if (!m_situation.isRunnable(*job)) {
            continue;
        }
        UploadBatch batch = m_source.next(*job, m_situation.health(), m_situation.nowMs(),
            [this, &job](
                const QueuedFile &file, UploadFault::Kind fault) { m_settling.fail(*job, file, fault); });
        if (!batch.isEmpty()) {
            job->setOnItsWay(batch.files.size());
            job->isChanged = true;
            return batch;
        }
        m_jobs.endIfOver(job); // where all the rest has gone
    }
    return {};
}

void UploadSender::onCame(const UploadBatch &batch, const StoreAnswer &answer)
{
    const UploadJobs::Job job = m_jobs.of(batch.task);
    hearOfService(batch, answer, job && !job->hasFresh());
    if (!job) {
        return; // it has ended without waiting for this
    }
    m_settling.settle(*job, batch, answer);
    job->isChanged = true;
    sendOn();
    m_records.flush(m_lines.count() > 0);
}

/// @param isLeft as UploadHealth has it
void UploadSender::hearOfService(const UploadBatch &batch, const StoreAnswer &answer, bool isLeft)
{
    UploadHealth &health = m_situation.health();
    const qint64 waitedUntil = health.waitsUntilMs();
    health.note(batch, answer, isLeft, m_situation.nowMs());
    if (health.waitsUntilMs() != waitedUntil) {
        m_jobs.noteChange(); // of all uploads: they wait for the same service
    }
    const bool isRefused = answer.failure.problem == WebProblem::Unauthorized;
    if (isRefused && batch.session == health.session() && m_situation.refuseSession()) {
        m_jobs.noteChange();
        emit sessionRefused();
    }
}
