#pragma once

#include "commonplugin_export.h"
#include "importer.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QThread>

#include <memory>

class ImportProgressWidget;

/**
 * Runs imports for a part of the window that has no loader of its own, one after another on one thread, each
 * with a progress widget.
 *
 * Lives on the GUI thread, where all its signals come. The thread starts at the first import. The destructor
 * cancels what runs, drops what waits, and returns when the thread has ended.
 */
class COMMONPLUGIN_EXPORT ImportRunner : public QObject
{
    Q_OBJECT

public:
    explicit ImportRunner(QObject *parent = nullptr);
    ~ImportRunner() override;

    /// Whether imports that are started from now on show their progress; they do unless told otherwise.
    void setProgressShown(bool shown) { m_progressShown = shown; }

    /// @param mode 0 references the files in place, 1 copies them into the store; others are ignored
    void start(const QStringList &paths, int mode);
    /// The same, shown by a widget that exists and is not the runner's.
    void start(const QStringList &paths, int mode, ImportProgressWidget *progress);

    /// True from start() until the last import has ended; false already where the last finished() arrives.
    bool isRunning() const { return !m_jobs.isEmpty(); }
    /// Stops the running import and those that wait, each with its finished().
    void cancel();
    /// Of the import that runs now.
    ImportProgress progress() const;

signals:
    void started();
    void finished(const ImportReport &report);

private:
    struct Job
    {
        std::shared_ptr<Importer> importer;
        QPointer<ImportProgressWidget> progress;
    };

    ImportProgressWidget *makeProgress(int mode);
    void runNext();
    void finish(const ImportReport &report);

    QThread m_thread;
    QObject *m_worker = nullptr; ///< lives on m_thread; nothing but a place for it to be called
    QList<Job> m_jobs; ///< the first one runs
    QList<QPointer<ImportProgressWidget>> m_widgets; ///< those made here
    bool m_busy = false; ///< an import is on the thread, or its finish is being told
    bool m_progressShown = true;
};
