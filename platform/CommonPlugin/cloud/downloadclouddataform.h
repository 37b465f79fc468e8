#pragma once

#include "commonplugin_export.h"

#include <QPointer>
#include <QWidget>

/**
 * The window that searches the cloud service for studies and brings the chosen ones into the index. One for
 * the process; GUI thread. What was begun goes on while the window is hidden, and after a restart.
 */
class COMMONPLUGIN_EXPORT DownloadCloudDataForm : public QWidget
{
    Q_OBJECT

public:
    static DownloadCloudDataForm *instance();

    /// The window that it accompanies; may be null. Not owned.
    void setMainWindow(QWidget *window) { m_mainWindow = window; }
    /// Shows what holds now: the session, and what the index has of the studies in the list.
    void reflesh();

public slots:
    /// The session of whoever is signed in. May come several times for one.
    void onJessionInfo(QByteArray sessionId);

signals:
    /// Something has come into the index.
    void imported();

private:
    explicit DownloadCloudDataForm(QWidget *parent = nullptr);

    QPointer<QWidget> m_mainWindow;
};
