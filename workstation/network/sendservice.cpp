#include "sendservice.h"

#include "sendcoordinator.h"

#include <QCoreApplication>
#include <QSet>
#include <QThread>

#include <algorithm>

Q_DECLARE_METATYPE(SendObject)

struct SendService::Private
{
    explicit Private(QString path)
        : storePath(std::move(path))
    { }

    const QString storePath;
    QThread thread;
    SendCoordinator *coordinator = nullptr; ///< lives on the thread
    QVector<SendJob> jobs;
    QString problem;
    qint64 lastId = 0;
    QSet<qint64> ofThisRun;
    QSet<qint64> known; ///< by a list of the jobs
    std::unique_ptr<SendStore> log; ///< for reading

    template <typename Action>
    void order(Action action)
    {
        QMetaObject::invokeMethod(coordinator, action, Qt::QueuedConnection);
    }
    qint64 newId();
};

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
    qRegisterMetaType<QVector<SendObject>>("QVector<SendObject>");
    d->coordinator = new SendCoordinator(storePath, std::move(options));
    d->coordinator->moveToThread(&d->thread);
    connect(&d->thread, &QThread::finished, d->coordinator, &QObject::deleteLater);
    connect(&d->thread, &QThread::started, d->coordinator, &SendCoordinator::start);
    connect(d->coordinator, &SendCoordinator::accepted, this, &SendService::accepted);
    connect(d->coordinator, &SendCoordinator::failed, this, &SendService::failed);
    connect(d->coordinator, &SendCoordinator::jobsRead, this,
        [this](const QVector<SendJob> &jobs, const QString &problem) {
            d->jobs = jobs;
            d->problem = problem;
            for (const SendJob &job : jobs) {
                d->known.insert(job.id);
            }
            emit changed();
        });
    d->thread.setObjectName(QStringLiteral("SendCoordinator"));
    d->thread.start();
}

SendService::~SendService()
{
    d->thread.quit();
    d->thread.wait();
}

QString SendService::storePathOf(const QString &indexPath)
{
    return indexPath + QStringLiteral(".send");
}

qint64 SendService::enqueue(const QStringList &paths, const DicomNode &node, SendSource source)
{
    SendJob job;
    job.id = d->newId();
    job.node = node;
    job.source = source;
    job.created = QDateTime::currentDateTime();
    d->ofThisRun.insert(job.id);
    d->order([coordinator = d->coordinator, job, paths] { coordinator->add(job, paths); });
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

QString SendService::storeProblem() const
{
    return d->problem;
}

QVector<SendObject> SendService::objects(qint64 job, int first, int count, bool onlyFailed) const
{
    if (!d->log) {
        d->log = std::make_unique<SendStore>(d->storePath);
    }
    return d->log->isOpen() ? d->log->objects(job, first, count, onlyFailed) : QVector<SendObject>();
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
