#pragma once

#include <QDialog>
#include <QElapsedTimer>

class QLabel;
class QProgressBar;

/**
 * Says that a deletion runs, once it takes long enough to be noticed, and keeps the user's hands off until it
 * is over: it is modal and cannot be closed. For the stack of the GUI thread, for as long as the deletion
 * runs.
 */
class DeletionNotice : public QDialog
{
    Q_OBJECT

public:
    explicit DeletionNotice(QWidget *parent);

    /// Draws how far the deletion has come, or where there are none in all that it waits; windows are
    /// painted, and input to them is lost.
    void showProgress(int done, int total);

    void reject() override { }

private:
    QLabel *const m_text;
    QProgressBar *const m_bar;
    QElapsedTimer m_running;
};
