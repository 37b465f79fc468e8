#pragma once

#include <QObject>
#include <QPointer>
#include <QSet>

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

signals:
    /// A retrieval has ended; says how.
    void ended(const QString &text);

private:
    void show();
    void tellEnded();

    RetrievalService *const m_service;
    const IndexWatcher *const m_watcher;
    QWidget *const m_window;
    QAction *const m_action;
    QPointer<QueryRetrieveWindow> m_searchWindow;
    QSet<qint64> m_open; ///< retrievals that were not over when they were last looked at
};
