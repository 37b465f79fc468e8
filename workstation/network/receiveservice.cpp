#include "receiveservice.h"

#include "mainsetting.h"
#include "objectspool.h"
#include "settingsnotifier.h"
#include "spoolindexer.h"
#include "systemtext.h"

namespace {

constexpr int lookMs = 300;
constexpr int tryAgainMs = 2000; ///< the program that has the port may end
constexpr char journalName[] = "/problems.txt";

DuplicatePolicy configuredPolicy()
{
    return MainSetting::duplicatePolicy().value().toInt() == int(DuplicatePolicy::TakeNew)
        ? DuplicatePolicy::TakeNew
        : DuplicatePolicy::KeepOld;
}

ScpSettings portSettings(const ReceiveSettings &settings)
{
    ScpSettings result;
    result.aeTitle = settings.aeTitle;
    result.bindAddress = settings.address;
    result.port = settings.port;
    result.callers = settings.callers;
    result.acceptPrivateClasses = settings.acceptPrivateClasses;
    return result;
}

} // namespace

bool ReceiveStatus::isAsFarAs(const ReceiveStatus &other) const
{
    return waiting == other.waiting && stuck == other.stuck && counts.received == other.counts.received
        && counts.refused == other.counts.refused && counts.indexed == other.counts.indexed
        && counts.keptAside == other.counts.keptAside && counts.associations == other.counts.associations
        && counts.lastProblem.time == other.counts.lastProblem.time;
}

/// In the order in which it is made; ended in the opposite one.
struct ReceiveService::Work
{
    Work(const QString &databasePath, bool isSynced)
        : synced(isSynced)
        , journal(ObjectSpool::folderOf(databasePath) + QLatin1String(journalName))
        , spool(databasePath, isSynced)
    { }

    void begin(const QString &databasePath)
    {
        error = spool.open();
        if (error == 0) {
            indexer = std::make_unique<SpoolIndexer>(databasePath, spool, journal, synced);
            indexer->setPolicy(configuredPolicy());
            provider = std::make_unique<StoreProvider>(spool, *indexer, journal);
        }
    }

    const bool synced;
    int error = 0;
    ReceiveJournal journal;
    ObjectSpool spool;
    std::unique_ptr<SpoolIndexer> indexer;
    std::unique_ptr<StoreProvider> provider;
    std::unique_ptr<StoreScp> port;
};

ReceiveService::ReceiveService(QObject *parent)
    : QObject(parent)
{
    m_timer.setInterval(lookMs);
    connect(&m_timer, &QTimer::timeout, this, &ReceiveService::look);
    connect(SettingsNotifier::instance(), &SettingsNotifier::receivingChanged, this,
        &ReceiveService::applySettings);
}

ReceiveService::~ReceiveService() = default;

void ReceiveService::openIndex(const QString &databasePath)
{
    if (m_work && m_databasePath == databasePath) {
        return;
    }
    closeIndex();
    m_databasePath = databasePath;
    m_work = std::make_unique<Work>(databasePath, ReceiveSettings::read().synced);
    m_work->begin(databasePath);
    m_timer.start();
    applySettings();
}

void ReceiveService::closeIndex()
{
    m_timer.stop();
    m_work.reset();
    m_failure = {};
    m_tried.reset();
    tell();
}

void ReceiveService::applySettings()
{
    if (!m_work) {
        return;
    }
    const ReceiveSettings settings = ReceiveSettings::read();
    const ScpSettings wanted = portSettings(settings);
    if (!settings.enabled) {
        m_work->port.reset();
        m_failure = {};
        m_tried.reset();
    } else if (!m_work->port || !(m_work->port->settings() == wanted)) {
        m_work->port.reset();
        listen(wanted);
    }
    tell();
}

void ReceiveService::tell()
{
    m_told = status();
    emit changed();
}

void ReceiveService::listen(const ScpSettings &settings)
{
    if (m_work->error != 0) {
        m_failure = {ListenFailure::Reason::Other, systemText(m_work->error)};
    } else {
        m_work->port = std::make_unique<StoreScp>(settings, *m_work->provider);
        m_failure = m_work->port->start();
    }
    if (m_failure.reason != ListenFailure::Reason::None) {
        m_work->port.reset();
        m_sinceTry.start();
        const bool isTold = m_tried && *m_tried == settings;
        m_tried = settings;
        if (!isTold) {
            emit portFailed(settings.port, m_failure);
        }
    } else {
        m_tried.reset();
    }
}

ReceiveStatus ReceiveService::status() const
{
    ReceiveStatus status;
    status.failure = m_failure;
    if (m_work) {
        status.spoolProblem = m_work->error != 0 ? systemText(m_work->error) : QString();
        status.listening = m_work->port != nullptr;
        status.port = m_work->port ? m_work->port->port() : 0;
        status.aeTitle = m_work->port ? m_work->port->settings().aeTitle : QString();
        status.counts = m_work->journal.counts();
    }
    if (m_work && m_work->indexer) {
        status.waiting = m_work->indexer->waiting();
        status.stuck = m_work->indexer->isStuck();
    }
    return status;
}

StoreProvider *ReceiveService::provider() const
{
    return m_work ? m_work->provider.get() : nullptr;
}

QString ReceiveService::journalFile() const
{
    return m_work ? m_work->journal.file() : QString();
}

void ReceiveService::look()
{
    if (m_work->indexer) {
        m_work->indexer->setPolicy(configuredPolicy());
    }
    const bool failed = m_failure.reason != ListenFailure::Reason::None;
    if (failed && m_work->error == 0 && m_sinceTry.hasExpired(tryAgainMs)) {
        applySettings();
    } else if (!status().isAsFarAs(m_told)) {
        tell();
    }
}
