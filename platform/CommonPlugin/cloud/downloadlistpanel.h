#pragma once

#include <QPointer>
#include <QWidget>

class DownloadEngine;
class DownloadListModel;
class QPushButton;
class QTreeView;
class RetryNotice;

/// The downloads of an index with what can be done about them. GUI thread.
class DownloadListPanel : public QWidget
{
    Q_OBJECT

public:
    explicit DownloadListPanel(QWidget *parent);

    /// Shows this engine's downloads; not owned, and may go.
    void setEngine(DownloadEngine *engine);

private:
    void refresh();
    void refreshButtons();
    void refreshRetry();
    void tryNow();
    QStringList chosen() const;

    QPointer<DownloadEngine> m_engine;
    DownloadListModel *m_model;
    RetryNotice *m_retry;
    QTreeView *m_view;
    QPushButton *m_stop = nullptr;
    QPushButton *m_resume = nullptr;
    QPushButton *m_remove = nullptr;
};
