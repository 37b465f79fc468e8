#pragma once

#include "sendbatch.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

class DetailLabel;
class PlainTableView;
class QLabel;
class QProgressBar;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
class SendFailureModel;

/// How the sends of the dialog go: one bar for all that run, a line for each destination, and what was not
/// taken and why. Shows what SendNotifier knows, and else what is counted. GUI thread.
class SendProgressPanel : public QWidget
{
    Q_OBJECT

public:
    explicit SendProgressPanel(QWidget *parent = nullptr);

    /// A request of which the host tells nothing but count().
    void expect(qint64 images);
    /// One of those images has been sent.
    void count();
    bool isSending() const { return m_batch.isRunning(); }

signals:
    /// A send has begun, or the last one has ended.
    void sendingChanged();

private:
    void build();
    QWidget *buildJobs();
    QWidget *buildFailures();
    QPushButton *addButton(const QString &text, const QString &name, const QString &toolTip);
    void update();
    void showBatch();
    void showJobs();
    void fillItem(QTreeWidgetItem *item, const SentJob &job);
    void showFailures();
    void showDetails();
    void enableButtons();
    qint64 currentJob() const;

    SendBatch m_batch;
    QElapsedTimer m_time;
    QTimer m_update; ///< one for however many changes
    QTimer m_tick; ///< time goes on where nothing changes
    QLabel *m_headline = nullptr;
    QProgressBar *m_bar = nullptr;
    QTreeWidget *m_jobs = nullptr;
    DetailLabel *m_notice = nullptr; ///< of the chosen send
    SendFailureModel *m_failureModel = nullptr;
    QLabel *m_failureCaption = nullptr;
    PlainTableView *m_failures = nullptr;
    DetailLabel *m_reason = nullptr; ///< of the chosen failure
    QWidget *m_jobArea = nullptr;
    QWidget *m_failureArea = nullptr;
    QPushButton *m_retry = nullptr;
    QPushButton *m_cancel = nullptr;
};
