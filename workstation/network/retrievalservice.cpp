#include "retrievalservice.h"

#include "receiveservice.h"

#include <QThread>

#include <algorithm>
#include <mutex>

namespace {

constexpr int lookMs = 200;
constexpr quint16 classNotSupported = 0x0122;

/// Whether the archive has not done what it was asked for, but might by the other way.
bool isUnserved(const RetrieveResult &result)
{
    const bool isRefused =
        result.failure.problem == NetworkProblem::NoContext || result.status == classNotSupported;
    const bool allFailed = result.failure.isNone() && result.progress.failed > 0
        && result.progress.completed + result.progress.warned == 0;
    return isRefused || allFailed;
}

} // namespace

/// One retrieval on its thread.
struct RetrievalService::Work
{
    Work(const Retrieval &wanted, const StoreProvider *taker, bool canBeSent)
        : retrieval(wanted)
        , provider(taker)
        , isListening(canBeSent)
        , scu(wanted.archive.node, options)
    {
        scu.setListener([this](const RetrieveProgress &now) {
            const std::lock_guard lock(mutex);
            retrieval.result.progress = now;
        });
    }

    void run();
    void setUsed(RetrieveMethod method)
    {
        const std::lock_guard lock(mutex);
        retrieval.used = method;
    }
    Retrieval snapshot()
    {
        const std::lock_guard lock(mutex);
        return retrieval;
    }

    std::mutex mutex; ///< of retrieval while the thread runs
    Retrieval retrieval;
    const StoreProvider *const provider;
    const bool isListening;
    const ScuOptions options = Archive::ownOptions();
    RetrieveScu scu;
    std::unique_ptr<QThread> thread;
};

void RetrievalService::Work::run()
{
    const RetrieveMethod method = retrieval.archive.method;
    RetrieveResult result;
    bool isMove = method == RetrieveMethod::Move;
    if (!isMove) {
        setUsed(RetrieveMethod::Get);
        result = scu.get(retrieval.request, *provider);
        isMove = method == RetrieveMethod::Auto && isUnserved(result)
            && (isListening || result.failure.problem == NetworkProblem::NoContext);
    }
    const bool lacksReceiver = isMove && !isListening;
    if (isMove && !lacksReceiver) {
        setUsed(RetrieveMethod::Move);
        result = scu.move(retrieval.request, options.ownAeTitle);
    }
    const std::lock_guard lock(mutex);
    retrieval.needsReceiver = lacksReceiver;
    retrieval.result = result;
    retrieval.state =
        result.failure.problem == NetworkProblem::Stopped ? RetrievalState::Cancelled : RetrievalState::Ended;
}

RetrievalService::RetrievalService(ReceiveService *receiving, QObject *parent)
    : QObject(parent)
    , m_receiving(receiving)
{
    m_timer.setInterval(lookMs);
    connect(&m_timer, &QTimer::timeout, this, &RetrievalService::look);
}

RetrievalService::~RetrievalService()
{
    closeIndex();
}

Retrieval *RetrievalService::find(qint64 id)
{
    const auto found = std::find_if(m_retrievals.begin(), m_retrievals.end(),
        [id](const Retrieval &retrieval) { return retrieval.id == id; });
    return found == m_retrievals.end() ? nullptr : &*found;
}

void RetrievalService::enqueue(const QVector<Retrieval> &retrievals)
{
    for (Retrieval retrieval : retrievals) {
        retrieval.id = ++m_lastId;
        m_retrievals.append(retrieval);
    }
    next();
    emit changed();
}

void RetrievalService::next()
{
    const StoreProvider *provider = m_receiving->provider();
    if (!provider) {
        endAll(m_receiving->status().spoolProblem);
        return;
    }
    if (m_work) {
        return;
    }
    for (Retrieval &retrieval : m_retrievals) {
        if (retrieval.state == RetrievalState::Waiting) {
            retrieval.state = RetrievalState::Running;
            m_work = std::make_unique<Work>(retrieval, provider, m_receiving->status().listening);
            m_work->thread.reset(QThread::create([work = m_work.get()] { work->run(); }));
            m_work->thread->setStackSize(ScuAssociation::stackBytes);
            m_work->thread->start();
            m_timer.start();
            return;
        }
    }
    m_timer.stop();
}

/// What waits would wait for ever.
void RetrievalService::endAll(const QString &spoolProblem)
{
    for (Retrieval &retrieval : m_retrievals) {
        if (retrieval.state == RetrievalState::Waiting && !spoolProblem.isEmpty()) {
            retrieval.state = RetrievalState::Ended;
            retrieval.spoolProblem = spoolProblem;
        }
    }
}

void RetrievalService::end()
{
    m_work->thread->wait();
    m_work.reset();
}

void RetrievalService::look()
{
    if (!m_work) {
        return;
    }
    const Retrieval now = m_work->snapshot();
    if (Retrieval *kept = find(now.id)) {
        *kept = now;
    }
    if (now.isOver()) {
        end();
        next();
    }
    emit changed();
}

void RetrievalService::cancel(qint64 id)
{
    Retrieval *retrieval = find(id);
    if (retrieval && retrieval->state == RetrievalState::Waiting) {
        retrieval->state = RetrievalState::Cancelled;
        emit changed();
    } else if (retrieval && m_work && m_work->snapshot().id == id) {
        m_work->scu.cancel();
    }
}

void RetrievalService::retry(qint64 id)
{
    Retrieval *retrieval = find(id);
    if (retrieval && retrieval->isOver()) {
        retrieval->state = RetrievalState::Waiting;
        retrieval->needsReceiver = false;
        retrieval->spoolProblem.clear();
        retrieval->result = {};
        next();
        emit changed();
    }
}

void RetrievalService::removeEnded()
{
    m_retrievals.erase(std::remove_if(m_retrievals.begin(), m_retrievals.end(),
                           [](const Retrieval &retrieval) { return retrieval.isOver(); }),
        m_retrievals.end());
    emit changed();
}

void RetrievalService::closeIndex()
{
    for (Retrieval &retrieval : m_retrievals) {
        if (!retrieval.isOver()) {
            retrieval.state = RetrievalState::Cancelled;
        }
    }
    if (m_work) {
        m_work->scu.abort();
        end();
    }
    m_timer.stop();
    emit changed();
}
