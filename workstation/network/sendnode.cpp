#include "sendnode.h"

#include "sendworker.h"

#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>

namespace {

constexpr int graceStepMs = 10;
/// Waiting objects that are worth one more association.
constexpr int worthAnAssociation = 32;

} // namespace

SendNode::SendNode(const DicomNode &node)
    : m_state(std::make_shared<SendNodeState>())
{
    m_state->node = node;
}

SendNode::~SendNode() = default;

const DicomNode &SendNode::node() const
{
    return m_state->node;
}

bool SendNode::mustWait(const QDateTime &now) const
{
    return m_state->leave || m_nextTry > now;
}

void SendNode::forgetTrouble()
{
    m_failures = 0;
    m_awaySince = m_nextTry = QDateTime();
    m_trouble = {};
}

int SendNode::mostCounted(const SendOptions &options)
{
    return worthAnAssociation * options.associationsPerNode;
}

void SendNode::work(int waiting, const QString &storePath, const SendOptions &options, SendBoard &board)
{
    const int worth = std::min(options.associationsPerNode, 1 + waiting / worthAnAssociation);
    const auto wanted = static_cast<std::size_t>(m_failures > 0 ? 1 : worth);
    while (m_runners.size() < wanted) {
        Runner runner;
        runner.worker = std::make_unique<SendWorker>(storePath, options, m_state, board);
        runner.thread = std::thread([worker = runner.worker.get()] { worker->run(); });
        m_runners.push_back(std::move(runner));
    }
}

void SendNode::cutOff(qint64 job)
{
    for (const Runner &runner : m_runners) {
        if (runner.worker->currentJob() == job) {
            runner.worker->abort();
        }
    }
}

SendNode::Reaped SendNode::reap(const SendOptions &options)
{
    Reaped reaped;
    for (Runner &runner : m_runners) {
        if (runner.worker->isDone()) {
            runner.thread.join();
            runner.worker.reset();
            reaped.anything = true;
        }
    }
    m_runners.erase(std::remove_if(m_runners.begin(), m_runners.end(),
                        [](const Runner &runner) { return !runner.worker; }),
        m_runners.end());
    if (m_state->answered.exchange(false)) {
        forgetTrouble();
    }
    return m_runners.empty() && m_state->leave ? afterFailure(options) : reaped;
}

/// Nobody works for the node any more.
SendNode::Reaped SendNode::afterFailure(const SendOptions &options)
{
    const QDateTime now = QDateTime::currentDateTime();
    const NetworkFailure failure = m_state->failure;
    m_state->leave = false;
    if (!m_awaySince.isValid()) {
        m_awaySince = now;
    }
    if (failure.isPermanent() || m_awaySince.msecsTo(now) > options.giveUpMs) {
        forgetTrouble();
        return {true, true, failure};
    }
    constexpr int mostDoublings = 20;
    const qint64 pause = qint64(options.firstPauseMs) << std::min(m_failures, mostDoublings);
    m_nextTry = now.addMSecs(std::min(pause, qint64(options.longestPauseMs)));
    m_trouble = failure;
    ++m_failures;
    return {true, false, failure};
}

void SendNode::stop(const QDeadlineTimer &grace)
{
    for (Runner &runner : m_runners) {
        while (!runner.worker->isDone() && !grace.hasExpired()) {
            QThread::msleep(graceStepMs);
        }
        runner.worker->stop();
    }
}

void SendNode::join()
{
    for (Runner &runner : m_runners) {
        runner.thread.join();
    }
    m_runners.clear();
}
