#pragma once

#include "indexcounts.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>

class IndexConnection;

/**
 * Looks every fraction of a second whether anybody has written to the index, and counts its records.
 *
 * Made without a parent, moved to a thread and started there; it opens its own connection on that thread and
 * closes it there when it is deleted. Counting a large index takes long, so the pause before the next count
 * grows with it.
 */
class IndexWatchWorker : public QObject
{
    Q_OBJECT

public:
    explicit IndexWatchWorker(const QString &databasePath);
    ~IndexWatchWorker() override;

public slots:
    void start();
    void count();

signals:
    /// Another connection has committed since the last look.
    void changed();
    void counted(const IndexCounts &counts);

private:
    void look();
    qint64 dataVersion() const;

    const QString m_databasePath;
    std::unique_ptr<IndexConnection> m_connection;
    QTimer *const m_timer;
    qint64 m_version = -1;
    bool m_countDue = true;
    QElapsedTimer m_sinceCount;
    qint64 m_countPause = 0;
};
