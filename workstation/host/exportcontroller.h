#pragma once

#include "exportrequest.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

class ExportDialog;
class ExportProgressDialog;
class ExportQueue;
class QAction;
class QStatusBar;
class QToolButton;
class QWidget;
class SelectionStatus;

/**
 * "Export As…": asks how the selected records are to be exported, runs that in the background, and keeps a
 * button in the status bar that tells of it and shows it. Owned by the window; GUI thread.
 */
class ExportController : public QObject
{
    Q_OBJECT

public:
    ExportController(const SelectionStatus *selection, QStatusBar *bar, QWidget *window);

    QAction *action() const { return m_action; }
    ExportQueue *queue() const { return m_queue; }
    /// Whether exports run or wait.
    bool isRunning() const;
    void cancelAll();

private:
    void ask();
    void start(const ExportRequest &request);
    void showJob(int job);
    void followQueue();
    void onEnded(int job);
    void sayWhatRuns();
    void tell(const QString &text);

    const SelectionStatus *const m_selection;
    QWidget *const m_window;
    ExportQueue *const m_queue;
    QAction *const m_action;
    QToolButton *const m_button;
    QTimer m_look;
    QList<QPointer<ExportProgressDialog>> m_dialogs; ///< one for each job that was not left behind
    QPointer<ExportDialog> m_asking;
    ExportRequest m_last; ///< what is proposed the next time
    int m_told = 0; ///< the job that the button is about
};
