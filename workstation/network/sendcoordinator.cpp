#include "sendcoordinator.h"

#include "sendlister.h"
#include "sendnode.h"
#include "sendpaths.h"
#include "sendqueue.h"

namespace {

constexpr int busyLookMs = 200;
constexpr int idleLookMs = 1000;
constexpr int graceMs = 700; ///< for the objects in flight at the end

QString keyOf(const DicomNode &node)
{
    return node.aeTitle + QLatin1Char('\n') + node.host + QLatin1Char('\n') + QString::number(node.port);
}

} // namespace

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
    const QDeadlineTimer grace(graceMs);
    for (const std::shared_ptr<SendNode> &node : qAsConst(m_nodes)) {
        node->stop(grace);
    }
    for (const std::shared_ptr<SendNode> &node : qAsConst(m_nodes)) {
        node->join();
    }
    if (m_lister.joinable()) {
        m_lister.join();
    }
    carryOut(); // what was refused until now has its last chance
}

void SendCoordinator::start()
{
    look();
}

/// Opens the store where it is not, and asks it whether it can be written again.
void SendCoordinator::lookAtStore()
{
    if (!m_store || !m_store->isOpen()) {
        m_store = std::make_unique<SendStore>(m_storePath);
    } else if (!m_problem.isEmpty() && m_store->canWrite()) {
        m_problem.clear();
        m_board.anyChange = true;
    }
    carryOut();
}

void SendCoordinator::take(Order order)
{
    m_orders.push_back(std::move(order));
    carryOut();
    m_board.anyChange = true;
    m_look.start(0);
}

void SendCoordinator::carryOut()
{
    if (m_orders.empty() || !m_store || !m_store->isOpen()) {
        return;
    }
    while (!m_orders.empty() && m_orders.front().write(*m_store)) {
        m_orders.pop_front();
        m_board.anyChange = true;
    }
    m_board.setHolds(m_store->holds());
}

void SendCoordinator::add(const SendJob &job, const QStringList &paths)
{
    take({[job, paths](SendStore &store) { return store.addJob(job, paths); }, job});
}

void SendCoordinator::setHold(qint64 job, SendHold hold)
{
    take({[job, hold](SendStore &store) { return store.setHold(job, hold); }, {}});
    for (const std::shared_ptr<SendNode> &node : qAsConst(m_nodes)) {
        if (hold == SendHold::Cancelled) {
            node->cutOff(job);
        }
    }
}

void SendCoordinator::retryFailed(qint64 job)
{
    take({[job](SendStore &store) { return store.retryFailed(job); }, {}});
    for (const std::shared_ptr<SendNode> &node : qAsConst(m_nodes)) {
        node->forgetTrouble();
    }
}

void SendCoordinator::remove(qint64 job)
{
    take({[job](SendStore &store) { return store.removeJob(job); }, {}});
}

void SendCoordinator::look()
{
    lookAtStore();
    bool isBusy = false;
    if (m_store->isOpen()) {
        if (!m_isOwner && m_ownership.tryToGet()) {
            m_isOwner = m_store->recover();
        }
        const qint64 version = m_store->dataVersion();
        if (std::exchange(m_version, version) != version) { // others wrote
            m_board.setHolds(m_store->holds());
            m_board.anyChange = true;
        }
        isBusy = isLookingAtPaths();
        sendOn();
    }
    for (const std::shared_ptr<SendNode> &node : qAsConst(m_nodes)) {
        isBusy = isBusy || node->isWorking() || node->nextTry().isValid();
    }
    tellProblem();
    if (m_board.anyChange.exchange(false)) {
        tellJobs();
    }
    tellAccepted(); // behind the jobs: whose they are is known by then
    m_look.start(isBusy ? busyLookMs : idleLookMs);
}

void SendCoordinator::sendOn()
{
    SendQueue queue(*m_store);
    for (const std::shared_ptr<SendNode> &node : qAsConst(m_nodes)) {
        const SendNode::Reaped reaped = node->reap(m_options);
        if (reaped.givenUp) {
            const auto failAll = [node = node->node(), failure = reaped.failure](
                                     SendStore &store) { return SendQueue(store).failAll(node, failure); };
            m_orders.push_back({failAll, {}});
        }
        m_board.anyChange = m_board.anyChange || reaped.anything;
    }
    carryOut();
    if (m_isOwner) {
        startLister();
        startWorkers();
    }
}

SendNode &SendCoordinator::nodeFor(const DicomNode &node)
{
    std::shared_ptr<SendNode> &found = m_nodes[keyOf(node)];
    if (!found) {
        found = std::make_shared<SendNode>(node);
    }
    return *found;
}

void SendCoordinator::startWorkers()
{
    const QDateTime now = QDateTime::currentDateTime();
    SendQueue queue(*m_store);
    for (const WaitingNode &waiting : queue.nodes(now, SendNode::mostCounted(m_options))) {
        SendNode &node = nodeFor(waiting.node);
        if (!node.mustWait(now)) {
            node.work(waiting.waiting, m_storePath, m_options, m_board);
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
    if (m_lister.joinable() || !m_listerPause.hasExpired() || SendPaths(*m_store).job() == 0) {
        return;
    }
    m_listerDone = false;
    m_lister = std::thread([this] {
        const auto listed = [this] {
            m_board.anyChange = true;
            // Workers need not wait for the next look.
            QMetaObject::invokeMethod(&m_look, [this] { m_look.start(0); });
        };
        const QString problem = SendLister(m_storePath, listed, m_board.stop).run();
        if (!problem.isEmpty()) {
            m_board.noteProblem(problem);
            QMetaObject::invokeMethod(&m_look, [this] { m_listerPause.setRemainingTime(idleLookMs); });
        }
        m_listerDone = true;
        listed();
    });
}

/// What the store has refused here or to the threads; it stays until the store can be written again.
void SendCoordinator::tellProblem()
{
    const QString elsewhere = m_board.takeProblem();
    const QString problem = m_store->problem().isEmpty() ? elsewhere : m_store->problem();
    if (!problem.isEmpty() && problem != m_problem) {
        m_problem = problem;
        m_board.anyChange = true;
    }
}

void SendCoordinator::tellJobs()
{
    const QDateTime now = QDateTime::currentDateTime();
    QVector<SendJob> jobs;
    if (m_store->isOpen()) {
        if (m_isOwner) {
            m_store->endJobs(now, now.addMSecs(-m_options.keepEndedMs));
        }
        jobs = m_store->jobs();
    }
    for (const Order &order : m_orders) {
        if (order.job.id != 0) {
            jobs.append(order.job);
        }
    }
    for (SendJob &job : jobs) {
        const auto node = m_nodes.constFind(keyOf(job.node));
        if (node != m_nodes.constEnd() && job.state == SendJobState::Waiting) {
            job.trouble = node.value()->trouble();
            job.nextTry = node.value()->nextTry();
        }
    }
    emit jobsRead(jobs, m_problem);
}

void SendCoordinator::tellAccepted()
{
    const QHash<qint64, int> all = m_board.takeAccepted();
    for (auto one = all.cbegin(); one != all.cend(); ++one) {
        emit accepted(one.key(), one.value());
    }
}
