#include "downloadengine.h"

#include "cloudsession.h"
#include "createconnection.h"
#include "downloadcoordinator.h"
#include "httpuploadfile.h"

#include <QCoreApplication>

#include <algorithm>
#include <memory>

namespace {

std::unique_ptr<DownloadEngine> &only()
{
    static std::unique_ptr<DownloadEngine> engine;
    return engine;
}

} // namespace

DownloadEngine *DownloadEngine::current()
{
    if (only() && only()->m_databasePath != databasePath()) {
        release();
    }
    if (!only()) {
        HttpUploadFile *client = HttpUploadFile::instance();
        only() = std::make_unique<DownloadEngine>(databasePath());
        DownloadEngine *engine = only().get();
        connect(client, &HttpUploadFile::sessionChanged, engine,
            [client, engine] { engine->setSession(client->session()); });
        connect(engine, &DownloadEngine::sessionRefused, client, &HttpUploadFile::sessionRefused);
        connect(
            QCoreApplication::instance(), &QCoreApplication::aboutToQuit, engine, &DownloadEngine::release);
        engine->setSession(client->session());
    }
    return only().get();
}

bool DownloadEngine::isAnyRunning()
{
    return only() && only()->isRunning();
}

void DownloadEngine::release()
{
    only().reset();
}

DownloadEngine::DownloadEngine(const QString &databasePath, DuplicatePolicy policy)
    : m_databasePath(databasePath)
    , m_coordinator(new DownloadCoordinator(databasePath, policy))
{
    qRegisterMetaType<QVector<DownloadTally>>();
    m_coordinator->moveToThread(&m_thread);
    connect(&m_thread, &QThread::started, m_coordinator, &DownloadCoordinator::start);
    connect(&m_thread, &QThread::finished, m_coordinator, &QObject::deleteLater);
    connect(m_coordinator, &DownloadCoordinator::told, this, [this](const QVector<DownloadTally> &tallies) {
        m_tallies = tallies;
        emit changed();
    });
    connect(m_coordinator, &DownloadCoordinator::imported, this, &DownloadEngine::imported);
    connect(m_coordinator, &DownloadCoordinator::sessionRefused, this, &DownloadEngine::sessionRefused);
    m_thread.setObjectName(QStringLiteral("downloads"));
    m_thread.start();
}

DownloadEngine::~DownloadEngine()
{
    m_thread.quit();
    m_thread.wait();
}

bool DownloadEngine::isRunning() const
{
    return std::any_of(m_tallies.begin(), m_tallies.end(), [](const DownloadTally &tally) {
        return tally.state == DownloadState::Running || tally.state == DownloadState::Indexing
            || tally.state == DownloadState::Retrying;
    });
}

void DownloadEngine::setSession(const CloudSession &session)
{
    tell([session](DownloadCoordinator &coordinator) { coordinator.setSession(session); });
}

void DownloadEngine::setPolicy(DuplicatePolicy policy)
{
    tell([policy](DownloadCoordinator &coordinator) { coordinator.setPolicy(policy); });
}

void DownloadEngine::add(const DownloadStudy &study)
{
    tell([study](DownloadCoordinator &coordinator) { coordinator.add(study); });
}

void DownloadEngine::stop(const QString &studyUid)
{
    tell([studyUid](DownloadCoordinator &coordinator) { coordinator.stop(studyUid); });
}

void DownloadEngine::resume(const QString &studyUid)
{
    tell([studyUid](DownloadCoordinator &coordinator) { coordinator.resume(studyUid); });
}

void DownloadEngine::remove(const QString &studyUid)
{
    tell([studyUid](DownloadCoordinator &coordinator) { coordinator.remove(studyUid); });
}

void DownloadEngine::tell(std::function<void(DownloadCoordinator &)> deed)
{
    QMetaObject::invokeMethod(
        m_coordinator, [this, deed = std::move(deed)] { deed(*m_coordinator); }, Qt::QueuedConnection);
}
