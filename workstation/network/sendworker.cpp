#include "sendworker.h"

#include "sendboard.h"
#include "storescu.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

#include <algorithm>

namespace {

/// Objects that a worker takes at once: few enough that others find some, too.
constexpr int takenAtOnce = 32;
constexpr int lookMs = 20;
constexpr int lingerMs = 1000;
constexpr int refusedMs = 100; ///< before the store is asked again
static_assert(takenAtOnce <= StoreScu::mostKinds, "what was taken always fits into one association");

StoreKind kindOf(const SendObject &object)
{
    return {object.sopClassUid.toLatin1(), object.transferSyntaxUid.toLatin1()};
}

} // namespace

SendWorker::SendWorker(
    QString storePath, SendOptions options, std::shared_ptr<SendNodeState> node, SendBoard &board)
    : m_storePath(std::move(storePath))
    , m_options(std::move(options))
    , m_node(std::move(node))
    , m_board(board)
{ }

SendWorker::~SendWorker() = default;

void SendWorker::run()
{
    {
        SendStore store(m_storePath);
        SendQueue queue(store);
        QDeadlineTimer linger(lingerMs);
        while (!mustEnd() && !linger.hasExpired()) {
            QVector<SendObject> taken =
                queue.take(m_node->node, QDateTime::currentDateTimeUtc(), takenAtOnce);
            if (taken.isEmpty()) {
                if (!store.problem().isEmpty()) {
                    m_board.noteProblem(store.problem());
                    break;
                }
                QThread::msleep(lookMs);
                continue;
            }
            m_board.anyChange = true;
            lookAgain(queue, taken);
            if (!sendTaken(queue, taken)) {
                break;
            }
            linger.setRemainingTime(lingerMs);
        }
        m_scu.reset();
        setAssociation(nullptr);
    }
    m_done = true;
}

/// Files that could not be read when their job was made are tried again by retryFailed().
void SendWorker::lookAgain(SendQueue &queue, QVector<SendObject> &taken)
{
    StoreFileReader reader;
    const auto cannotBeSent = [&](SendObject &object) {
        if (!object.sopClassUid.isEmpty()) {
            return false;
        }
        const StoreFile file = reader.read(QFile::encodeName(object.path));
        object.sopClassUid = QString::fromLatin1(file.kind.sopClass);
        object.sopInstanceUid = QString::fromLatin1(file.sopInstance);
        object.transferSyntaxUid = QString::fromLatin1(file.kind.transferSyntax);
        if (file.problem == StoreProblem::None) {
            return false;
        }
        recordOutcome(queue, object, {file.problem, 0, {}, file.detail});
        return true;
    };
    taken.erase(std::remove_if(taken.begin(), taken.end(), cannotBeSent), taken.end());
}

bool SendWorker::mustEnd() const
{
    return m_board.stop || m_node->leave;
}

void SendWorker::setAssociation(std::unique_ptr<ScuAssociation> association)
{
    if (m_association) {
        m_association->release(); // may take a while, and can be cut off
    }
    const std::lock_guard lock(m_mutex);
    m_association = std::move(association);
    if (m_association && m_isStopped) {
        m_association->abort();
    }
}

void SendWorker::abort()
{
    const std::lock_guard lock(m_mutex);
    if (m_association) {
        m_association->abort();
    }
}

void SendWorker::stop()
{
    const std::lock_guard lock(m_mutex);
    m_isStopped = true;
    if (m_association) {
        m_association->abort();
    }
}

/// What has become of an object must be noted before another is sent: while the store refuses, nothing is.
/// @return false where the end came first; the next start then finds the object as one that was being sent
bool SendWorker::insist(SendStore &store, const std::function<bool()> &write) const
{
    while (!write()) {
        m_board.noteProblem(store.problem());
        if (m_board.stop) {
            return false;
        }
        QThread::msleep(refusedMs);
    }
    return true;
}

bool SendWorker::giveBack(SendQueue &queue, const QVector<SendObject> &objects) const
{
    return objects.isEmpty() || insist(queue.store(), [&] { return queue.release(objects); });
}

/// @return false where this worker can do no more
bool SendWorker::sendTaken(SendQueue &queue, const QVector<SendObject> &taken)
{
    bool goOn = true;
    int at = 0;
    for (; at < taken.size() && goOn && !mustEnd(); ++at) {
        if (m_board.isHeld(taken[at].job)) {
            giveBack(queue, {taken[at]});
            continue;
        }
        m_currentJob = taken[at].job;
        if (!isOpenFor(taken.mid(at))) {
            const NetworkFailure failure = open(queue, taken.mid(at));
            if (!failure.isNone()) {
                goOn = mayGoOnAfter(failure, queue, taken.mid(at));
                break;
            }
        }
        const QByteArray next = at + 1 < taken.size() ? QFile::encodeName(taken[at + 1].path) : QByteArray();
        goOn = recordOutcome(queue, taken[at], m_scu->send(QFile::encodeName(taken[at].path), next));
    }
    m_currentJob = 0;
    giveBack(queue, taken.mid(at)); // the state of those that were recorded is no longer that of a taken one
    m_board.anyChange = true;
    return goOn;
}

bool SendWorker::isOpenFor(const QVector<SendObject> &taken) const
{
    return m_association && m_association->isOpen() && !m_association->isAborted()
        && std::all_of(taken.cbegin(), taken.cend(),
            [this](const SendObject &object) { return m_kinds.contains(kindOf(object)); });
}

NetworkFailure SendWorker::open(SendQueue &queue, const QVector<SendObject> &taken)
{
    m_kinds.clear();
    for (const SendObject &object : taken) {
        if (!m_kinds.contains(kindOf(object))) {
            m_kinds.append(kindOf(object));
        }
    }
    for (const StoreKind &kind : queue.kinds(m_node->node, StoreScu::mostKinds)) {
        if (m_kinds.size() < StoreScu::mostKinds && !m_kinds.contains(kind)) {
            m_kinds.append(kind);
        }
    }
    m_scu.reset();
    setAssociation(std::make_unique<ScuAssociation>(m_node->node, m_options.association));
    m_scu = std::make_unique<StoreScu>(*m_association);
    return m_association->open(StoreScu::contextsFor(m_kinds));
}

/// After an association could not be had.
bool SendWorker::mayGoOnAfter(
    const NetworkFailure &failure, SendQueue &queue, const QVector<SendObject> &taken)
{
    if (failure.problem == NetworkProblem::Stopped) {
        return true;
    }
    if (failure.problem != NetworkProblem::NoContext) {
        m_node->fail(failure);
        return false;
    }
    StoreOutcome outcome; // other kinds may be welcome
    outcome.problem = StoreProblem::ClassNotAccepted;
    m_node->answered = true;
    return std::all_of(taken.cbegin(), taken.cend(), [&](const SendObject &object) {
        return m_board.isHeld(object.job) || recordOutcome(queue, object, outcome);
    });
}

/// @return false where this worker can do no more
bool SendWorker::recordOutcome(SendQueue &queue, SendObject object, const StoreOutcome &outcome)
{
    if (outcome.network.problem == NetworkProblem::Stopped) {
        return giveBack(queue, {object});
    }
    object.outcome = outcome;
    object.changed = QDateTime::currentDateTimeUtc();
    ++object.attempts;
    QDateTime notBefore;
    if (outcome.isAccepted()) {
        object.state = SendObjectState::Accepted;
    } else if (outcome.isPassing() && object.attempts < m_options.attemptsPerObject) {
        object.state = SendObjectState::Waiting;
        const qint64 pause = qint64(m_options.firstPauseMs) << (object.attempts - 1);
        notBefore = object.changed.addMSecs(std::min(pause, qint64(m_options.longestPauseMs)));
    } else {
        object.state = SendObjectState::Failed;
    }
    if (!insist(queue.store(), [&] { return queue.record(object, notBefore); })) {
        return false;
    }
    if (object.state == SendObjectState::Accepted) {
        m_board.noteAccepted(object.job);
    }
    if (outcome.problem == StoreProblem::Network) {
        m_node->fail(outcome.network);
        return false;
    }
    m_node->answered = m_node->answered || outcome.status != 0 || outcome.isAccepted();
    return true;
}
