#include "uploadengine.h"

#include "createconnection.h"
#include "httpuploadfile.h"
#include "uploadcoordinator.h"
#include "uploadtask.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QRandomGenerator>

namespace {

std::unique_ptr<UploadEngine> &only()
{
    static std::unique_ptr<UploadEngine> engine;
    return engine;
}

constexpr int guiWaitMs = 100;

UploadTally tallyOf(const UploadRow &row)
{
    UploadTally tally;
    tally.all = row.files;
    tally.waiting = row.waiting();
    tally.succeeded = row.stored;
    tally.failed = row.failed;
    tally.bytesAll = row.bytes;
    tally.bytesDone = row.bytesStored;
    return tally;
}

UploadTally beginning(const UploadOrder &order)
{
    UploadTally tally;
    tally.all = order.files.size();
    tally.waiting = tally.all;
    return tally;
}

} // namespace

qint64 UploadOrder::newId()
{
    constexpr int randomBits = 20;
    return (QDateTime::currentMSecsSinceEpoch() << randomBits)
        | QRandomGenerator::system()->bounded(1 << randomBits);
}

UploadEngine *UploadEngine::current()
{
    if (only() && only()->m_databasePath != databasePath()) {
        release();
    }
    if (!only()) {
        only().reset(new UploadEngine(databasePath()));
    }
    return only().get();
}

void UploadEngine::release()
{
    only().reset();
}

void UploadEngine::setSession(const CloudSession &session)
{
    if (only()) {
        only()->tell([session](UploadCoordinator &coordinator) { coordinator.setSession(session); });
    }
}

UploadEngine::UploadEngine(QString databasePath)
    : m_databasePath(std::move(databasePath))
    , m_coordinator(new UploadCoordinator(m_databasePath, HttpUploadFile::instance()->session()))
{
    m_coordinator->moveToThread(&m_thread);
    connect(&m_thread, &QThread::started, m_coordinator, &UploadCoordinator::start);
    connect(&m_thread, &QThread::finished, m_coordinator, &QObject::deleteLater);
    // At the end of the program, however that comes; being registered twice does no harm.
    qAddPostRoutine(&UploadEngine::release);
    connectCoordinator();
    m_thread.setObjectName(QStringLiteral("uploads"));
    m_thread.start();
}

/// A request that is on its way is cut off; what it was about waits in the index.
UploadEngine::~UploadEngine()
{
    // Behind this the coordinator has heard of everything that was asked for.
    QMetaObject::invokeMethod(
        m_coordinator, [] {}, Qt::BlockingQueuedConnection);
    m_thread.quit();
    m_thread.wait();
    for (UpLoadTask *task : qAsConst(m_tasks)) {
        UploadTally tally = task->tally();
        tally.state = UploadTally::State::Paused;
        task->m_engine = nullptr;
        task->take(tally);
    }
}

void UploadEngine::connectCoordinator()
{
    connect(m_coordinator, &UploadCoordinator::tallied, this, [this](qint64 id, const UploadTally &tally) {
        if (UpLoadTask *task = taskOf(id)) {
            task->take(tally);
        }
    });
    connect(m_coordinator, &UploadCoordinator::runEnded, this, [this](qint64 id) {
        if (UpLoadTask *task = taskOf(id)) {
            task->tellRunEnd();
        }
    });
    connect(m_coordinator, &UploadCoordinator::ended, this, [this](qint64 id) {
        if (UpLoadTask *task = taskOf(id)) {
            task->tellEnd();
        }
    });
    connect(m_coordinator, &UploadCoordinator::sessionRefused, HttpUploadFile::instance(),
        &HttpUploadFile::sessionRefused);
}

UpLoadTask *UploadEngine::handle(const UploadOrder &order, const UploadTally &tally)
{
    auto *task = new UpLoadTask(*this, order.id, order.patientName, order.series, tally);
    m_tasks.insert(order.id, task);
    return task;
}

UpLoadTask *UploadEngine::add(UploadOrder order)
{
    UpLoadTask *task = handle(order, beginning(order));
    tell([order = std::move(order)](UploadCoordinator &coordinator) { coordinator.add(order); });
    return task;
}

QVector<UpLoadTask *> UploadEngine::unfinished()
{
    QVector<UpLoadTask *> tasks;
    const UploadRows rows = UploadStore(m_databasePath, guiWaitMs).tasks();
    for (const UploadRow &row : rows.value_or(QVector<UploadRow>())) {
        if (!m_tasks.contains(row.id) && !m_finished.contains(row.id)) {
            UploadOrder order;
            order.id = row.id;
            order.patientName = row.patientName;
            order.series = row.series;
            tasks.append(handle(order, tallyOf(row)));
            tell([id = row.id](UploadCoordinator &coordinator) { coordinator.tellAgain(id); });
        }
    }
    return tasks;
}

void UploadEngine::forget(const UpLoadTask &task)
{
    m_tasks.remove(task.m_id);
}

void UploadEngine::finish(qint64 task)
{
    m_finished.insert(task);
    tell([task](UploadCoordinator &coordinator) { coordinator.finish(task); });
}

void UploadEngine::flag(qint64 task)
{
    tell([task](UploadCoordinator &coordinator) { coordinator.flag(task); });
}

void UploadEngine::retryFailed(qint64 task)
{
    tell([task](UploadCoordinator &coordinator) { coordinator.retryFailed(task); });
}

void UploadEngine::tryNow()
{
    tell([](UploadCoordinator &coordinator) { coordinator.tryNow(); });
}

void UploadEngine::rename(qint64 task, const QString &patientName)
{
    tell([task, patientName](UploadCoordinator &coordinator) { coordinator.rename(task, patientName); });
}

QVector<UploadFault> UploadEngine::faults(qint64 task) const
{
    return UploadStore(m_databasePath, guiWaitMs).faults(task);
}

void UploadEngine::tell(std::function<void(UploadCoordinator &)> deed)
{
    QMetaObject::invokeMethod(
        m_coordinator, [this, deed = std::move(deed)] { deed(*m_coordinator); }, Qt::QueuedConnection);
}
