#pragma once

#include "exportqueue.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

/**
 * One export of a queue: how far it is, and what came of it. Closing it stops nothing; it can be shown again
 * until its job has ended. Follows the queue, which outlives it. GUI thread.
 */
class ExportProgressDialog : public QDialog
{
    Q_OBJECT

public:
    ExportProgressDialog(ExportQueue *queue, int job, QWidget *parent = nullptr);

    int job() const { return m_job; }

signals:
    /// What failed is to be tried again.
    void retryRequested(const ExportRequest &request);

private:
    void build();
    void update();
    void showProgress(const ExportProgress &progress);
    void showEnd(const ExportReport &report);
    void openPlace() const;
    void retry();

    ExportQueue *const m_queue;
    const int m_job;
    QLabel *m_headline = nullptr;
    QProgressBar *m_bar = nullptr;
    QLabel *m_figures = nullptr;
    QPlainTextEdit *m_failures = nullptr;
    QPushButton *m_cancel = nullptr;
    QPushButton *m_open = nullptr;
    QPushButton *m_retry = nullptr;
    QTimer m_look;
    QElapsedTimer m_sincePhase;
    ExportProgress::Phase m_phase = ExportProgress::Phase::Listing;
};
