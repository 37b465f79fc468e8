#include "storecare.h"

#include "indexconnection.h"
#include "sendservice.h"

StoreCare::StoreCare(QObject *parent)
    : QObject(parent)
{
    qRegisterMetaType<ConnectionFailure>("ConnectionFailure");
    qRegisterMetaType<DeletionReport>("DeletionReport");
    qRegisterMetaType<StoreSweep>("StoreSweep");
}

StoreCare::~StoreCare()
{
    m_stop = true;
    if (m_worker.joinable()) {
        m_worker.join();
    }
}

void StoreCare::begin(const QString &databasePath)
{
    m_running = true;
    m_worker = std::thread([this, databasePath] {
        work(databasePath);
        m_running = false;
    });
}

void StoreCare::work(const QString &databasePath)
{
    DeletionReport deletions;
    {
        const IndexConnection index(databasePath);
        if (!index.isOpen()) {
            if (!m_stop) {
                emit failed(index.failure());
            }
            return;
        }
        deletions = RecordDeletion::finishBegun(index.database(), m_stop);
    }
    const StoreSweep sweep = sweepStore(databasePath, {SendService::storePathOf(databasePath)}, m_stop);
    if (!m_stop) {
        emit finished(deletions, sweep); // queued to receivers on the GUI thread
    }
}
