#include "indexwatcher.h"

#include "indexwatchworker.h"

IndexWatcher::IndexWatcher(QObject *parent)
    : QObject(parent)
{
    qRegisterMetaType<IndexCounts>();
    m_thread.setObjectName(QStringLiteral("index watcher"));
}

IndexWatcher::~IndexWatcher()
{
    m_thread.quit();
    m_thread.wait();
}

void IndexWatcher::watch(const QString &databasePath)
{
    auto *worker = new IndexWatchWorker(databasePath);
    worker->moveToThread(&m_thread);
    connect(&m_thread, &QThread::started, worker, &IndexWatchWorker::start);
    connect(&m_thread, &QThread::finished, worker, &QObject::deleteLater);
    connect(worker, &IndexWatchWorker::changed, this, &IndexWatcher::changed);
    connect(worker, &IndexWatchWorker::counted, this, &IndexWatcher::keep);
    m_thread.start(QThread::LowPriority);
}

void IndexWatcher::keep(const IndexCounts &counts)
{
    m_counts = counts;
    emit counted(counts);
}
