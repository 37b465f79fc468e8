#pragma once

#include "commonplugin_export.h"
#include "importreport.h"
#include "loadnotifier.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QRunnable>

#include <memory>

class ImportProgressWidget;
class Importer;

/**
 * Loads folders and files into the index, once.
 *
 * Made on the GUI thread, given its folders there, then moved to a thread of its owner's whose event loop
 * calls runRunnable(), or given to a pool. Whoever made it deletes it after finishReadFiles(), on any thread.
 * The progress widget belongs to itself: it lasts until the user has closed the report. Deleting a loader
 * that has not run counts as a run that failed.
 */
class COMMONPLUGIN_EXPORT NRunnable : public QObject, public QRunnable
{
    Q_OBJECT

public:
    NRunnable();
    ~NRunnable() override;

    /// What the next run loads. @param type 0 references the files in place, 1 copies them into the store
    /// @return 0 where accepted; 1 for an unknown type, 2 for no folders: a run then fails at once
    int loadDirectors(QList<QString> dirs, int type);

    LoadNotifier *notifier() const;
    /// Null once the user has closed it. GUI thread.
    ImportProgressWidget *progressWidget() const;

    /// Any thread: the run ends within a second with what it has, or does not begin.
    void cancel();
    /// What was found; complete once finishReadFiles() came.
    ImportReport report() const;

    void run() override;

public slots:
    /// Loads in the calling thread.
    void runRunnable();

private:
    void finish();

    std::shared_ptr<LoadNotifier> m_notifier;
    QPointer<ImportProgressWidget> m_progress;
    std::shared_ptr<Importer> m_importer;
    ImportReport m_report;
    bool m_finished = false;
};
