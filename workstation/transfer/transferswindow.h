#pragma once

#include "sendservice.h"

#include <QTimer>
#include <QWidget>

class LogCopyBar;
class DetailLabel;
class PlainTableView;
class QCheckBox;
class QLabel;
class QPushButton;
class SendJobModel;
class SendLogModel;

/**
 * The window of the transfers: the send jobs, how they stand, and what became of each object. Shows the jobs
 * of one service, which outlives it. GUI thread.
 */
class TransfersWindow : public QWidget
{
    Q_OBJECT

public:
    explicit TransfersWindow(SendService *service, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;

private:
    /// What can be done with a job.
    using Request = void (SendService::*)(qint64);
    using Condition = bool (*)(const SendJob &job);
    struct JobButton
    {
        QPushButton *button;
        Condition condition;
    };

    void build();
    QWidget *buildJobs();
    QLayout *buildJobButtons();
    QWidget *buildLog();
    void addJobButton(QLayout *layout, const QString &name, const QString &text, const QString &toolTip,
        Request request, Condition condition);
    QPushButton *addButton(QLayout *layout, const QString &name, const QString &text, const QString &toolTip);
    void update();
    void showLog();
    void showDetails();
    void tick();
    void enableButtons();
    void removeFinished();
    QVector<SendJob> chosenJobs() const;
    qint64 currentJob() const;

    SendService *const m_service;
    SendJobModel *m_model = nullptr;
    SendLogModel *m_logModel = nullptr;
    PlainTableView *m_jobs = nullptr;
    PlainTableView *m_log = nullptr;
    DetailLabel *m_notice = nullptr; ///< of the current job
    DetailLabel *m_reason = nullptr; ///< of the current object
    QTimer m_tick; ///< time goes on where nothing changes
    QLabel *m_problem = nullptr;
    QLabel *m_logCaption = nullptr;
    QCheckBox *m_onlyFailed = nullptr;
    QVector<JobButton> m_jobButtons;
    QPushButton *m_removeFinished = nullptr;
    LogCopyBar *m_copy = nullptr;
    qint64 m_loggedJob = 0;
    bool m_loggedOnlyFailed = false;
};
