#pragma once

#include "sendbatch.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

class QLabel;
class QProgressBar;
class SendFailureList;
class SendJobList;

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
    void update();
    void showBatch();

    SendBatch m_batch;
    QElapsedTimer m_time;
    QTimer m_update; ///< one for however many changes
    QTimer m_tick; ///< time goes on where nothing changes
    QLabel *m_headline = nullptr;
    QProgressBar *m_bar = nullptr;
    SendJobList *m_jobs = nullptr;
    SendFailureList *m_failures = nullptr;
};
