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
    m_worker = new IndexWatchWorker(databasePath);
    m_worker->moveToThread(&m_thread);
    connect(&m_thread, &QThread::started, m_worker, &IndexWatchWorker::start);
    connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    connect(m_worker, &IndexWatchWorker::changed, this, &IndexWatcher::changed);
    connect(m_worker, &IndexWatchWorker::counted, this, &IndexWatcher::counted);
    m_thread.start(QThread::LowPriority);
}

void IndexWatcher::countNow()
{
    if (m_worker) {
        QMetaObject::invokeMethod(m_worker, &IndexWatchWorker::count);
    }
}
