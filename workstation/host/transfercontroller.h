#pragma once

#include <QObject>
#include <QPointer>
#include <QSet>

class QAction;
class QMainWindow;
class QToolButton;
class SendService;
class TransfersWindow;

/// The window of the transfers, the action that shows it, and what the status bar says of sends: shown while
/// something is sent, or has failed since somebody looked. Owned by the window; GUI thread.
class TransferController : public QObject
{
    Q_OBJECT

public:
    explicit TransferController(QMainWindow *window);

    /// Once, when there is an index; without it nothing can be shown.
    void setService(SendService *sends);

    QAction *action() const { return m_action; }
    /// Shows the window, or brings it back.
    void showTransfers();

signals:
    /// A job has ended; says how.
    void ended(const QString &text);

private:
    void update();
    void tellEnded();
    QString statusText() const;

    QMainWindow *const m_window;
    SendService *m_sends = nullptr;
    QSet<qint64> m_open; ///< jobs that were not over when they were last looked at
    QAction *const m_action;
    QToolButton *const m_status;
    QPointer<TransfersWindow> m_transfers;
};
