#pragma once

#include "sendboard.h"
#include "sendservice.h"

#include <QElapsedTimer>
#include <QMap>
#include <QTimer>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

struct SendNodeState;
class SendWorker;

/// The one that sends, of all processes with the same file of jobs: who holds the lock.
class SendOwnership
{
public:
    explicit SendOwnership(const QString &storePath);
    ~SendOwnership();
    SendOwnership(const SendOwnership &) = delete;
    SendOwnership &operator=(const SendOwnership &) = delete;

    bool tryToGet();

private:
    int m_file = -1;
    bool m_isOurs = false;
};

/**
 * Has the jobs sent: starts and ends the workers of each node and the lister, keeps away from nodes that are
 * away, and tells how the jobs stand. Lives on a thread of its own; the destructor ends its threads.
 */
class SendCoordinator : public QObject
{
    Q_OBJECT

public:
    SendCoordinator(QString storePath, SendOptions options);
    ~SendCoordinator() override;

    /// @name For its thread
    /// @{
    void start();
    void add(const SendJob &job, const QStringList &paths);
    void setHold(qint64 job, SendHold hold);
    void retryFailed(qint64 job);
    void remove(qint64 job);
    void setOwnAeTitle(const QString &aeTitle) { m_options.association.ownAeTitle = aeTitle; }
    /// @}

signals:
    void jobsRead(const QVector<SendJob> &jobs, const QString &problem);
    void accepted(qint64 job, int count);
    void failed(qint64 job, const QVector<SendObject> &objects);

private:
    struct Node;

    void look();
    void reap(Node &node);
    void afterFailure(Node &node);
    void giveUp(Node &node, const NetworkFailure &failure);
    void startWorkers();
    void startLister();
    bool isLookingAtPaths();
    void tellJobs();
    void tellNews();
    Node &nodeFor(const DicomNode &node);

    const QString m_storePath;
    SendOptions m_options;
    SendBoard m_board;
    SendOwnership m_ownership;
    bool m_isOwner = false;
    std::unique_ptr<SendStore> m_store;
    qint64 m_version = 0;
    QMap<QString, std::shared_ptr<Node>> m_nodes;
    std::thread m_lister;
    std::atomic<bool> m_listerDone{true};
    QTimer m_look;
};
