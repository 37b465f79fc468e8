#pragma once

#include "sendqueue.h"
#include "sendservice.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>

class SendBoard;
class StoreScu;

/// What a node's workers share.
struct SendNodeState
{
    DicomNode node;
    std::atomic<bool> leave{false}; ///< its workers are to end: the node is away
    std::atomic<bool> answered{false}; ///< it has answered an object since this was last asked
    std::mutex mutex; ///< of what follows
    NetworkFailure failure; ///< why its workers ended

    void fail(const NetworkFailure &why)
    {
        const std::lock_guard lock(mutex);
        failure = why;
        leave = true;
    }
};

/**
 * Sends what waits for one node over one association at a time, on a thread of its own. The association stays
 * open while there is something to send, and a moment longer.
 */
class SendWorker
{
public:
    SendWorker(QString storePath, SendOptions options, std::shared_ptr<SendNodeState> node, SendBoard &board);
    ~SendWorker();

    /// Returns when nothing is left to send, or the node is away, or the board says so.
    void run();

    /// @name Any thread
    /// @{
    /// Cuts off what is being sent; run() then ends, or goes on with other jobs.
    void abort();
    /// The same for good: run() makes no other association.
    void stop();
    qint64 currentJob() const { return m_currentJob; }
    bool isDone() const { return m_done; }
    /// @}

private:
    void lookAgain(SendQueue &queue, QVector<SendObject> &taken);
    bool sendTaken(SendQueue &queue, const QVector<SendObject> &taken);
    bool isOpenFor(const QVector<SendObject> &taken) const;
    NetworkFailure open(SendQueue &queue, const QVector<SendObject> &taken);
    bool mayGoOnAfter(const NetworkFailure &failure, SendQueue &queue, const QVector<SendObject> &taken);
    bool insist(SendStore &store, const std::function<bool()> &write) const;
    bool giveBack(SendQueue &queue, const QVector<SendObject> &objects) const;
    bool recordOutcome(SendQueue &queue, SendObject object, const StoreOutcome &outcome);
    bool mustEnd() const;
    void setAssociation(std::unique_ptr<ScuAssociation> association);

    const QString m_storePath;
    const SendOptions m_options;
    const std::shared_ptr<SendNodeState> m_node;
    SendBoard &m_board;
    std::mutex m_mutex; ///< of the association's pointer, which only run() changes
    std::unique_ptr<ScuAssociation> m_association;
    bool m_isStopped = false; ///< under the mutex
    std::unique_ptr<StoreScu> m_scu;
    QVector<StoreKind> m_kinds; ///< that were offered
    std::atomic<qint64> m_currentJob{0};
    std::atomic<bool> m_done{false};
};
