#pragma once

#include "indexcounts.h"

#include <QObject>
#include <QThread>

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
    IndexCounts counts() const { return m_counts; }

signals:
    void changed();
    void counted(const IndexCounts &counts);

private:
    void keep(const IndexCounts &counts);

    QThread m_thread;
    IndexCounts m_counts;
};
