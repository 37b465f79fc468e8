#include "sessionservices.h"

SessionServices::SessionServices(QObject *parent)
    : QObject(parent)
    , m_programs(new RunningPrograms(this))
    , m_receiving(new ReceiveService(this))
    , m_retrievals(new RetrievalService(m_receiving, this))
{ }

/// What works with others ends before them.
SessionServices::~SessionServices()
{
    closeIndex();
}

void SessionServices::openIndex(const QString &databasePath)
{
    m_receiving->openIndex(databasePath);
    if (!m_sending || m_index != databasePath) {
        m_index = databasePath;
        m_sending = std::make_unique<SendService>(SendService::storePathOf(databasePath));
    }
}

void SessionServices::closeIndex()
{
    m_sending.reset();
    m_retrievals->closeIndex();
    m_receiving->closeIndex();
}
