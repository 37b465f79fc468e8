#include "sendservice.h"

#include "sendcoordinator.h"
#include "sendlog.h"

#include <QCoreApplication>
#include <QSet>
#include <QThread>

#include <algorithm>
#include <numeric>

namespace {

bool isPath(const QString &text)
{
    return !text.isEmpty() && !text.contains(QChar());
}

} // namespace

struct SendService::Private
{
    explicit Private(const QString &path)
        : storePath(path)
        , log(path)
    { }

    const QString storePath;
    const SendLog log;
    QThread thread;
    SendCoordinator *coordinator = nullptr; ///< lives on the thread
    QVector<SendJob> jobs;
    QString problem;
    qint64 lastId = 0;
    QSet<qint64> ofThisRun;
    QSet<qint64> known; ///< by a list of the jobs
    qint64 seenFailures = -1; ///< below 0 until the first list has come

    template <typename Action>
    void order(Action action)
    {
        QMetaObject::invokeMethod(coordinator, action, Qt::QueuedConnection);
    }
    qint64 newId();
    qint64 failures() const;
};

qint64 SendService::Private::failures() const
{
    return std::accumulate(jobs.cbegin(), jobs.cend(), qint64(0),
        [](qint64 sum, const SendJob &job) { return sum + job.failed; });
}

/// Grows with time, and differs from what other processes make.
qint64 SendService::Private::newId()
{
    constexpr int bits = 12;
    const qint64 process = QCoreApplication::applicationPid() % (1 << bits);
    const qint64 next = (QDateTime::currentMSecsSinceEpoch() << bits) | process;
    lastId = std::max(next, lastId + (1 << bits));
    return lastId;
}

SendService::SendService(const QString &storePath, SendOptions options, QObject *parent)
    : QObject(parent)
    , d(new Private(storePath))
{
    qRegisterMetaType<QVector<SendJob>>("QVector<SendJob>");
    d->coordinator = new SendCoordinator(storePath, std::move(options));
    d->coordinator->moveToThread(&d->thread);
    connect(&d->thread, &QThread::finished, d->coordinator, &QObject::deleteLater);
    connect(&d->thread, &QThread::started, d->coordinator, &SendCoordinator::start);
    connect(d->coordinator, &SendCoordinator::accepted, this, &SendService::accepted);
    connect(d->coordinator, &SendCoordinator::jobsRead, this,
        [this](const QVector<SendJob> &jobs, const QString &problem) {
            d->jobs = jobs;
            d->problem = problem;
            for (const SendJob &job : jobs) {
                d->known.insert(job.id);
            }
            const qint64 failures = d->failures();
            const bool isFirst = d->seenFailures < 0 && problem.isEmpty();
            if (isFirst || failures < d->seenFailures) { // of an earlier run; or tried again, or removed
                d->seenFailures = failures;
            }
            emit changed();
        });
    d->thread.setObjectName(QStringLiteral("SendCoordinator"));
    d->thread.start();
}

SendService::~SendService()
{
    d->order([] { QThread::currentThread()->quit(); }); // behind all that was asked for before
    d->thread.wait();
}

QString SendService::storePathOf(const QString &indexPath)
{
    return indexPath + QStringLiteral(".send");
}

QString SendService::storePath() const
{
    return d->storePath;
}

qint64 SendService::enqueue(
    const QStringList &paths, const DicomNode &node, SendSource source, const SendLabel &label)
{
    SendJob job;
    job.id = d->newId();
    job.node = node;
    job.label = label;
    job.source = source;
    job.created = QDateTime::currentDateTime();
    QStringList good = paths;
    good.erase(std::remove_if(good.begin(), good.end(), [](const QString &path) { return !isPath(path); }),
        good.end());
    job.skippedFiles = paths.size() - good.size();
    job.unlisted = good.size();
    d->ofThisRun.insert(job.id);
    d->order([coordinator = d->coordinator, job, good] { coordinator->add(job, good); });
    return job.id;
}

const QVector<SendJob> &SendService::jobs() const
{
    return d->jobs;
}

SendJob SendService::job(qint64 id) const
{
    const auto found =
        std::find_if(d->jobs.cbegin(), d->jobs.cend(), [id](const SendJob &job) { return job.id == id; });
    return found == d->jobs.cend() ? SendJob() : *found;
}

bool SendService::isOfThisRun(qint64 job) const
{
    return d->ofThisRun.contains(job);
}

bool SendService::isForgotten(qint64 id) const
{
    return d->known.contains(id) && job(id).id == 0;
}

qint64 SendService::unseenFailures() const
{
    return d->seenFailures < 0 ? 0 : d->failures() - d->seenFailures;
}

void SendService::setFailuresSeen()
{
    if (d->seenFailures >= 0) {
        d->seenFailures = d->failures();
    }
}

QString SendService::storeProblem() const
{
    return d->problem;
}

QVector<SendObject> SendService::objects(qint64 job, int first, int count, bool onlyFailed) const
{
    return d->log.objects(job, first, count, onlyFailed);
}

void SendService::setOwnAeTitle(const QString &aeTitle)
{
    d->order([coordinator = d->coordinator, aeTitle] { coordinator->setOwnAeTitle(aeTitle); });
}

void SendService::pause(qint64 job)
{
    d->order([coordinator = d->coordinator, job] { coordinator->setHold(job, SendHold::Paused); });
}

void SendService::resume(qint64 job)
{
    d->order([coordinator = d->coordinator, job] { coordinator->setHold(job, SendHold::None); });
}

void SendService::cancel(qint64 job)
{
    d->order([coordinator = d->coordinator, job] { coordinator->setHold(job, SendHold::Cancelled); });
}

void SendService::retryFailed(qint64 job)
{
    d->order([coordinator = d->coordinator, job] { coordinator->retryFailed(job); });
}

void SendService::remove(qint64 job)
{
    d->order([coordinator = d->coordinator, job] { coordinator->remove(job); });
}
