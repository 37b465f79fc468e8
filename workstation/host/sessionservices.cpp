#include "sessionservices.h"

#include "cloudcontroller.h"
#include "receivesettings.h"
#include "sendnotifier.h"
#include "settingsnotifier.h"

SessionServices::SessionServices(QObject *parent)
    : QObject(parent)
    , m_programs(new RunningPrograms(this))
    , m_receiving(new ReceiveService(this))
    , m_retrievals(new RetrievalService(m_receiving, this))
{
    connect(SettingsNotifier::instance(), &SettingsNotifier::receivingChanged, this, [this] {
        if (m_sending) {
            m_sending->setOwnAeTitle(ReceiveSettings::ownAeTitle());
        }
    });
}

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
        m_sending.reset();
        SendNotifier::instance()->forgetAll();
        SendOptions options;
        options.association.ownAeTitle = ReceiveSettings::ownAeTitle();
        m_sending = std::make_unique<SendService>(SendService::storePathOf(databasePath), options);
    }
}

void SessionServices::closeIndex()
{
    CloudController::releaseIndex();
    m_sending.reset();
    SendNotifier::instance()->forgetAll();
    m_retrievals->closeIndex();
    m_retrievals->removeEnded(); // tried again, they would fill another index
    m_receiving->closeIndex();
}
