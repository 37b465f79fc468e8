#include "retrievecontroller.h"

#include "archivetext.h"
#include "companionwindow.h"
#include "createconnection.h"
#include "indexwatcher.h"
#include "queryretrievewindow.h"
#include "retrievalservice.h"

#include <QAction>

RetrieveController::RetrieveController(
    RetrievalService *service, const IndexWatcher *watcher, QWidget *window)
    : QObject(window)
    , m_service(service)
    , m_watcher(watcher)
    , m_window(window)
    , m_action(new QAction(tr("Query/&Retrieve…"), this))
{
    m_action->setObjectName(QStringLiteral("actionQueryRetrieve"));
    m_action->setShortcut(QKeySequence(tr("Ctrl+R")));
    m_action->setEnabled(connectionFailure().reason == ConnectionFailure::Reason::None);
    m_action->setToolTip(tr("Search an archive, and bring images from it into the index"));
    connect(m_action, &QAction::triggered, this, &RetrieveController::show);
    connect(m_service, &RetrievalService::changed, this, &RetrieveController::tellEnded);
}

QueryRetrieveWindow *RetrieveController::searchWindow() const
{
    return m_searchWindow;
}

void RetrieveController::tellEnded()
{
    for (const Retrieval &retrieval : m_service->retrievals()) {
        if (!retrieval.isOver()) {
            m_open.insert(retrieval.id);
        } else if (m_open.remove(retrieval.id)) {
            emit ended(ArchiveText::endOf(retrieval));
        }
    }
}

void RetrieveController::show()
{
    if (!m_searchWindow) {
        m_searchWindow = new QueryRetrieveWindow(m_service, m_window);
        connect(m_watcher, &IndexWatcher::changed, m_searchWindow, &QueryRetrieveWindow::onIndexChanged);
    }
    bringUp(m_searchWindow);
    m_searchWindow->raise();
    m_searchWindow->activateWindow();
}
