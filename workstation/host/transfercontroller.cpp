#include "transfercontroller.h"

#include "companionwindow.h"
#include "jobtext.h"
#include "sendservice.h"
#include "transferswindow.h"
#include "transfertext.h"

#include <QAction>
#include <QMainWindow>
#include <QStatusBar>
#include <QToolButton>

TransferController::TransferController(QMainWindow *window)
    : QObject(window)
    , m_window(window)
    , m_action(new QAction(tr("&Transfers…"), this))
    , m_status(new QToolButton(window->statusBar()))
{
    m_action->setObjectName(QStringLiteral("actionTransfers"));
    m_action->setShortcut(QKeySequence(tr("Ctrl+Shift+T")));
    m_action->setEnabled(false);
    connect(m_action, &QAction::triggered, this, &TransferController::showTransfers);
    m_status->setObjectName(QStringLiteral("statusTransfers"));
    m_status->setAutoRaise(true);
    m_status->setToolTip(tr("Show the transfers"));
    m_status->setAccessibleName(m_status->toolTip());
    m_status->hide();
    window->statusBar()->addPermanentWidget(m_status);
    connect(m_status, &QToolButton::clicked, this, &TransferController::showTransfers);
}

void TransferController::setService(SendService *sends)
{
    m_sends = sends;
    connect(m_sends, &SendService::changed, this, &TransferController::update);
    m_action->setEnabled(true);
    update();
}

void TransferController::showTransfers()
{
    if (!m_sends) {
        return;
    }
    if (!m_transfers) {
        m_transfers = new TransfersWindow(m_sends, m_window);
    }
    bringUp(m_transfers);
    m_transfers->raise();
    m_transfers->activateWindow();
    update();
}

void TransferController::update()
{
    if (m_transfers && m_transfers->isVisible()) {
        m_sends->setFailuresSeen();
    }
    tellEnded();
    const QString text = statusText();
    m_status->setText(text);
    m_status->setAccessibleName(text.isEmpty() ? m_status->toolTip() : text);
    m_status->setVisible(!text.isEmpty());
}

void TransferController::tellEnded()
{
    for (const SendJob &job : m_sends->jobs()) {
        if (!job.isOver()) {
            m_open.insert(job.id);
        } else if (m_open.remove(job.id)) {
            emit ended(JobText::endOf(job));
        }
    }
}

QString TransferController::statusText() const
{
    qint64 total = 0;
    qint64 sent = 0;
    bool isSending = false;
    bool isWaiting = false;
    for (const SendJob &job : m_sends->jobs()) {
        if (!job.isOver()) {
            total += job.total;
            sent += job.accepted;
            isSending = isSending || job.state == SendJobState::Sending;
            isWaiting = true;
        }
    }
    const qint64 unseen = m_sends->unseenFailures();
    if (isSending) {
        return TransferText::ofCounts(sent, total, unseen);
    }
    if (unseen > 0) {
        return tr("%Ln image(s) could not be sent", nullptr, int(unseen));
    }
    return isWaiting ? tr("Sends are waiting") : QString();
}
