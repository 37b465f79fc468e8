#pragma once

#include "queueownership.h"
#include "sendboard.h"
#include "sendservice.h"
#include "sendstore.h"

#include <QDeadlineTimer>
#include <QMap>
#include <QTimer>

#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <thread>

class SendNode;

/**
 * Has the jobs sent: starts and ends the workers of each node and the lister, keeps away from nodes that are
 * away, and tells how the jobs stand. What it is asked for and the disk refuses is kept and tried again with
 * every look, in its order. Lives on a thread of its own; the destructor ends its threads.
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

private:
    /// Something that must be written.
    struct Order
    {
        std::function<bool(SendStore &)> write; ///< false where the store refuses
        SendJob job; ///< that it adds; id 0 where it adds none
    };

    void take(Order order);
    void carryOut();
    void look();
    void lookAtStore();
    void sendOn();
    void startWorkers();
    void startLister();
    bool isLookingAtPaths();
    void tellJobs();
    void tellAccepted();
    void tellProblem();
    SendNode &nodeFor(const DicomNode &node);

    const QString m_storePath;
    SendOptions m_options;
    SendBoard m_board;
    QueueOwnership m_ownership;
    bool m_isOwner = false;
    std::unique_ptr<SendStore> m_store;
    std::deque<Order> m_orders; ///< that the store has not taken yet
    QString m_problem; ///< why the store refuses
    qint64 m_version = 0;
    QMap<QString, std::shared_ptr<SendNode>> m_nodes;
    std::thread m_lister;
    std::atomic<bool> m_listerDone{true};
    QDeadlineTimer m_listerPause{0}; ///< after the store has refused
    QTimer m_look;
};
