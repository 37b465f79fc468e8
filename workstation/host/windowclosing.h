#pragma once

#include <QObject>
#include <QVector>

#include <functional>

class EditController;
class QWidget;
class TreeController;

/**
 * What a user is asked before the window closes, and the work that its end stops. GUI thread.
 *
 * Work that an end cuts short is added here, with its question; what goes on at the next start need not be.
 */
class WindowClosing : public QObject
{
    Q_OBJECT

public:
    struct RunningWork
    {
        std::function<bool()> isRunning;
        /// Says what is lost, what stays, and asks; empty where nothing is lost.
        QString question;
        /// Stops the work soon, which isRunning() tells; null where the work's owner ends it and nobody
        /// waits.
        std::function<void()> cancel;
    };

    /// Owned by the window.
    WindowClosing(QWidget *window, TreeController *tree, EditController *edits);

    void add(const RunningWork &work) { m_works += work; }
    /// Asks about what runs and what is unsaved.
    bool mayClose();
    /// Asks about what is unsaved; nothing may run.
    bool mayBeReplaced();
    /// Whether something runs that the window has to wait for.
    bool mustWait() const;
    /// Stops all that runs.
    void cancel();

private:
    bool mayStop(const QString &question);

    QWidget *const m_window;
    TreeController *const m_tree;
    EditController *const m_edits;
    QVector<RunningWork> m_works;
};
