#pragma once

#include <QObject>
#include <QPointer>

class IndexWatcher;
class QAction;
class QueryRetrieveWindow;
class QWidget;
class RetrievalService;

/// "Query/Retrieve…": the window that searches archives, made when it is first asked for. Owned by the
/// window; GUI thread.
class RetrieveController : public QObject
{
    Q_OBJECT

public:
    /// @param service outlives the window
    RetrieveController(RetrievalService *service, const IndexWatcher *watcher, QWidget *window);

    QAction *action() const { return m_action; }
    /// Null until it was first asked for.
    QueryRetrieveWindow *searchWindow() const;

private:
    void show();

    RetrievalService *const m_service;
    const IndexWatcher *const m_watcher;
    QWidget *const m_window;
    QAction *const m_action;
    QPointer<QueryRetrieveWindow> m_searchWindow;
};
