#pragma once

#include "indexcounts.h"

#include <QObject>
#include <QThread>

class IndexWatchWorker;

/**
 * Tells the GUI when the index has changed and what it holds, without ever making it wait: the looking and
 * counting happen on a thread of its own, which the destructor ends. GUI thread.
 */
class IndexWatcher : public QObject
{
    Q_OBJECT

public:
    explicit IndexWatcher(QObject *parent = nullptr);
    ~IndexWatcher() override;

    /// Begins to watch the index file; once.
    void watch(const QString &databasePath);
    /// Counts without waiting for the next look; counted() answers. Nothing where no index is watched.
    void countNow();

signals:
    void changed();
    void counted(const IndexCounts &counts);

private:
    QThread m_thread;
    IndexWatchWorker *m_worker = nullptr; ///< lives on m_thread, which deletes it
};
