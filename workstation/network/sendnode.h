#pragma once

#include "sendservice.h"

#include <QDateTime>

#include <memory>
#include <thread>
#include <vector>

class QDeadlineTimer;
class SendBoard;
class SendWorker;
struct SendNodeState;

/**
 * A node that objects are sent to: its workers on their threads, and when it is tried again where it is away.
 * For the coordinator's thread; end() comes before the destructor.
 */
class SendNode
{
public:
    explicit SendNode(const DicomNode &node);
    ~SendNode();
    SendNode(const SendNode &) = delete;
    SendNode &operator=(const SendNode &) = delete;

    const DicomNode &node() const;
    bool isWorking() const { return !m_runners.empty(); }
    /// Whether it is away, or its workers are about to end because it is.
    bool mustWait(const QDateTime &now) const;
    const QDateTime &nextTry() const { return m_nextTry; } ///< invalid where it is not away
    const NetworkFailure &trouble() const { return m_trouble; }
    void forgetTrouble();

    /// Has workers for so many waiting objects; one alone tries a node that was away.
    void work(int waiting, const QString &storePath, const SendOptions &options, SendBoard &board);
    /// Waiting objects beyond which no more workers come.
    static int mostCounted(const SendOptions &options);
    /// Cuts off what is being sent of a job.
    void cutOff(qint64 job);

    struct Reaped
    {
        bool anything = false; ///< a worker has ended
        bool givenUp = false; ///< nothing can be sent to it: what waits has failed
        NetworkFailure failure;
    };
    /// Takes away workers that have ended, and sees why.
    Reaped reap(const SendOptions &options);

    /// The end: workers have until a time for what is in flight.
    void stop(const QDeadlineTimer &grace);
    void join();

private:
    struct Runner
    {
        std::unique_ptr<SendWorker> worker;
        std::thread thread;
    };
    Reaped afterFailure(const SendOptions &options);

    const std::shared_ptr<SendNodeState> m_state;
    std::vector<Runner> m_runners;
    int m_failures = 0; ///< in a row
    QDateTime m_awaySince;
    QDateTime m_nextTry;
    NetworkFailure m_trouble;
};
