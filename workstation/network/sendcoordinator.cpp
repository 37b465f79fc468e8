#include "sendcoordinator.h"

#include "sendlister.h"
#include "sendworker.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

#include <algorithm>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr int busyLookMs = 200;
constexpr int idleLookMs = 1000;
constexpr int graceMs = 700; ///< for the objects in flight at the end
constexpr int graceStepMs = 10;
/// Waiting objects that are worth one more association.
constexpr int worthAnAssociation = 32;
constexpr int mostTold = 1000;

QString keyOf(const DicomNode &node)
{
    return node.aeTitle + QLatin1Char('\n') + node.host + QLatin1Char('\n') + QString::number(node.port);
}

} // namespace

SendOwnership::SendOwnership(const QString &storePath)
    : m_file(::open(QFile::encodeName(storePath + QStringLiteral(".lock")).constData(),
        O_RDWR | O_CREAT | O_CLOEXEC, 0644))
{ }

SendOwnership::~SendOwnership()
{
    if (m_file >= 0) {
        ::close(m_file);
    }
}

bool SendOwnership::tryToGet()
{
    m_isOurs = m_isOurs || (m_file >= 0 && flock(m_file, LOCK_EX | LOCK_NB) == 0);
    return m_isOurs;
}

struct SendCoordinator::Node
{
    struct Runner
    {
        std::unique_ptr<SendWorker> worker;
        std::thread thread;
    };
    std::shared_ptr<SendNodeState> state = std::make_shared<SendNodeState>();
    std::vector<Runner> runners;
    int failures = 0; ///< in a row
    QDateTime awaySince;
    QDateTime nextTry;
    NetworkFailure trouble;

    void forgetTrouble()
    {
        failures = 0;
        awaySince = nextTry = QDateTime();
        trouble = {};
    }
};

SendCoordinator::SendCoordinator(QString storePath, SendOptions options)
    : m_storePath(std::move(storePath))
    , m_options(std::move(options))
    , m_ownership(m_storePath)
    , m_look(this)
{
    m_look.setSingleShot(true);
    connect(&m_look, &QTimer::timeout, this, &SendCoordinator::look);
}

SendCoordinator::~SendCoordinator()
{
    m_board.stop = true;
    QDeadlineTimer grace(graceMs);
    for (const std::shared_ptr<Node> &node : qAsConst(m_nodes)) {
        for (Node::Runner &runner : node->runners) {
            while (!runner.worker->isDone() && !grace.hasExpired()) {
                QThread::msleep(graceStepMs);
            }
            runner.worker->abort();
        }
    }
    for (const std::shared_ptr<Node> &node : qAsConst(m_nodes)) {
        for (Node::Runner &runner : node->runners) {
            runner.worker->abort();
            runner.thread.join();
        }
    }
    if (m_lister.joinable()) {
        m_lister.join();
    }
}

void SendCoordinator::start()
{
    m_store = std::make_unique<SendStore>(m_storePath);
    look();
}

void SendCoordinator::add(const SendJob &job, const QStringList &paths)
{
    m_store->addJob(job, paths);
    m_board.anyChange = true;
    m_look.start(0);
}

void SendCoordinator::setHold(qint64 job, SendHold hold)
{
    m_store->setHold(job, hold);
    m_board.setHolds(m_store->holds());
    for (const std::shared_ptr<Node> &node : qAsConst(m_nodes)) {
        for (const Node::Runner &runner : node->runners) {
            if (hold == SendHold::Cancelled && runner.worker->currentJob() == job) {
                runner.worker->abort();
            }
        }
    }
    m_board.anyChange = true;
    m_look.start(0);
}

void SendCoordinator::retryFailed(qint64 job)
{
    m_store->retryFailed(job);
    m_board.setHolds(m_store->holds());
    for (const std::shared_ptr<Node> &node : qAsConst(m_nodes)) {
        node->forgetTrouble();
    }
    m_board.anyChange = true;
    m_look.start(0);
}

void SendCoordinator::remove(qint64 job)
{
    m_store->removeJob(job);
    m_board.anyChange = true;
    m_look.start(0);
}

void SendCoordinator::look()
{
    if (!m_store->isOpen()) {
        emit jobsRead({}, m_store->problem());
        return;
    }
    if (!m_isOwner && m_ownership.tryToGet()) {
        m_isOwner = m_store->recover();
    }
    const qint64 version = m_store->dataVersion();
    const bool othersWrote = std::exchange(m_version, version) != version;
    if (othersWrote) {
        m_board.setHolds(m_store->holds());
    }
    bool isBusy = isLookingAtPaths();
    for (const std::shared_ptr<Node> &node : qAsConst(m_nodes)) {
        reap(*node);
    }
    if (m_isOwner) {
        startLister();
        startWorkers();
    }
    for (const std::shared_ptr<Node> &node : qAsConst(m_nodes)) {
        isBusy = isBusy || !node->runners.empty() || node->nextTry.isValid();
    }
    tellNews();
    if (m_board.anyChange.exchange(false) || othersWrote) {
        tellJobs();
    }
    m_look.start(isBusy ? busyLookMs : idleLookMs);
}

void SendCoordinator::reap(Node &node)
{
    auto &runners = node.runners;
    for (Node::Runner &runner : runners) {
        if (runner.worker->isDone()) {
            runner.thread.join();
            runner.worker.reset();
            m_board.anyChange = true;
        }
    }
    runners.erase(std::remove_if(runners.begin(), runners.end(),
                      [](const Node::Runner &runner) { return !runner.worker; }),
        runners.end());
    if (node.state->answered.exchange(false)) {
        node.forgetTrouble();
    }
    if (runners.empty() && node.state->leave) {
        afterFailure(node);
    }
}

/// Nobody works for the node any more.
void SendCoordinator::afterFailure(Node &node)
{
    const QDateTime now = QDateTime::currentDateTime();
    const NetworkFailure failure = node.state->failure;
    node.state->leave = false;
    m_board.anyChange = true;
    if (!node.awaySince.isValid()) {
        node.awaySince = now;
    }
    if (failure.isPermanent() || node.awaySince.msecsTo(now) > m_options.giveUpMs) {
        giveUp(node, failure);
        return;
    }
    constexpr int mostDoublings = 20;
    const qint64 pause = qint64(m_options.firstPauseMs) << std::min(node.failures, mostDoublings);
    node.nextTry = now.addMSecs(std::min(pause, qint64(m_options.longestPauseMs)));
    node.trouble = failure;
    ++node.failures;
}

void SendCoordinator::giveUp(Node &node, const NetworkFailure &failure)
{
    node.forgetTrouble();
    SendQueue queue(*m_store);
    for (const SendObject &object : queue.failAll(node.state->node, failure, mostTold)) {
        m_board.noteFailed(object);
    }
}

SendCoordinator::Node &SendCoordinator::nodeFor(const DicomNode &node)
{
    std::shared_ptr<Node> &found = m_nodes[keyOf(node)];
    if (!found) {
        found = std::make_shared<Node>();
        found->state->node = node;
    }
    return *found;
}

void SendCoordinator::startWorkers()
{
    const QDateTime now = QDateTime::currentDateTime();
    const int most = worthAnAssociation * m_options.associationsPerNode;
    SendQueue queue(*m_store);
    for (const WaitingNode &waiting : queue.nodes(now, most)) {
        Node &node = nodeFor(waiting.node);
        if (node.state->leave || node.nextTry > now) {
            continue;
        }
        const auto wanted = static_cast<std::size_t>(
            std::min(m_options.associationsPerNode, 1 + waiting.waiting / worthAnAssociation));
        // One alone tries a node that was away.
        while (node.runners.size() < (node.failures > 0 ? 1 : wanted)) {
            Node::Runner runner;
            runner.worker = std::make_unique<SendWorker>(m_storePath, m_options, node.state, m_board);
            runner.thread = std::thread([worker = runner.worker.get()] { worker->run(); });
            node.runners.push_back(std::move(runner));
        }
    }
}

bool SendCoordinator::isLookingAtPaths()
{
    if (m_listerDone && m_lister.joinable()) {
        m_lister.join();
    }
    return m_lister.joinable();
}

void SendCoordinator::startLister()
{
    if (m_lister.joinable() || m_store->unlistedJob() == 0) {
        return;
    }
    m_listerDone = false;
    m_lister = std::thread([this] {
        const auto listed = [this] {
            m_board.anyChange = true;
            // Workers need not wait for the next look.
            QMetaObject::invokeMethod(&m_look, [this] { m_look.start(0); });
        };
        SendLister(m_storePath, listed, m_board.stop).run();
        m_listerDone = true;
        listed();
    });
}

void SendCoordinator::tellJobs()
{
    const QDateTime now = QDateTime::currentDateTime();
    if (m_isOwner) {
        m_store->endJobs(now, now.addMSecs(-m_options.keepEndedMs));
    }
    QVector<SendJob> jobs = m_store->jobs();
    for (SendJob &job : jobs) {
        const auto node = m_nodes.constFind(keyOf(job.node));
        if (node != m_nodes.constEnd() && job.state == SendJobState::Waiting) {
            job.trouble = node.value()->trouble;
            job.nextTry = node.value()->nextTry;
        }
    }
    emit jobsRead(jobs, m_store->problem());
}

void SendCoordinator::tellNews()
{
    const SendBoard::News news = m_board.takeNews();
    for (auto one = news.accepted.cbegin(); one != news.accepted.cend(); ++one) {
        emit accepted(one.key(), one.value());
    }
    for (auto one = news.failed.cbegin(); one != news.failed.cend(); ++one) {
        emit failed(one.key(), one.value());
    }
}
