#include "retrievalwork.h"

#include "objectplaces.h"

namespace {

constexpr quint16 classNotSupported = 0x0122;
constexpr quint16 someFailed = 0xb000;

/// Whether an archive has not done anything of what it was asked for, but might by the other way.
bool isUnserved(const RetrieveResult &result)
{
    const bool isRefused =
        result.failure.problem == NetworkProblem::NoContext || result.status == classNotSupported;
    const RetrieveProgress &now = result.progress;
    return isRefused || (result.failure.isNone() && result.missing() > 0 && now.completed + now.warned == 0);
}

bool isStopped(const RetrieveResult &result)
{
    return result.failure.problem == NetworkProblem::Stopped;
}

/// Whether an archive began to send, or had nothing to.
bool hasRun(const RetrieveResult &result)
{
    const RetrieveProgress &now = result.progress;
    return result.failure.isNone() && (result.status == 0 || now.completed + now.warned + now.failed > 0);
}

/// What there is to say where the second way was no better: its own reason, unless it is not offered.
void takeReason(RetrieveResult &result, const RetrieveResult &second)
{
    if (second.failure.problem != NetworkProblem::NoContext) {
        result.failure = second.failure;
        result.status = second.status != 0 ? second.status : result.status;
    }
}

RetrieveProgress sum(const RetrieveProgress &before, const RetrieveProgress &now)
{
    const int arrived = now.completed + now.warned;
    return {before.remaining, before.completed + now.completed, qMax(0, before.failed - arrived),
        before.warned + now.warned};
}

/// What is left of the missing objects after some of them were asked for again.
void add(RetrieveResult &result, const RetrieveResult &moved, const QStringList &asked)
{
    result.progress = sum(result.progress, moved.progress);
    const bool allCame = moved.isGood() && moved.progress.completed + moved.progress.warned >= asked.size();
    if (!allCame && moved.failedInstances.isEmpty()) {
        return; // nobody knows which
    }
    for (const QString &uid : asked) {
        if (!moved.failedInstances.contains(uid)) {
            result.failedInstances.removeAll(uid);
        }
    }
}

/// Whether an archive has tried all and said what failed; others stop at the first failure.
bool namesAllMissing(const RetrieveResult &result, int named)
{
    const bool hasTriedAll = result.status == 0 || result.status == someFailed;
    return hasTriedAll && named == result.missing();
}

QStringList missingOf(const RetrieveResult &result)
{
    QStringList uids = result.failedInstances;
    for (const QString &uid : result.refusedInstances) {
        uids.removeAll(uid);
    }
    return uids;
}

} // namespace

RetrievalWork::RetrievalWork(const Retrieval &wanted, const StoreProvider *provider, bool isListening)
    : m_retrieval(wanted)
    , m_provider(provider)
    , m_isListening(isListening)
    , m_options(Archive::ownOptions())
    , m_scu(wanted.archive.node, m_options)
    , m_query(wanted.archive.node, m_options)
    , m_thread(QThread::create([this] { run(); }))
{
    m_scu.setListener([this](const RetrieveProgress &now) { setProgress(now); });
    m_thread->setStackSize(ScuAssociation::stackBytes);
}

RetrievalWork::~RetrievalWork()
{
    m_thread->wait();
}

void RetrievalWork::start()
{
    m_thread->start();
}

Retrieval RetrievalWork::snapshot()
{
    const std::lock_guard lock(m_mutex);
    return m_retrieval;
}

void RetrievalWork::cancel()
{
    m_scu.cancel();
    m_query.cancel();
}

void RetrievalWork::abort()
{
    m_scu.abort();
    m_query.abort();
}

void RetrievalWork::setUsed(RetrieveMethod method)
{
    const std::lock_guard lock(m_mutex);
    m_retrieval.used = method;
}

void RetrievalWork::setProgress(const RetrieveProgress &now)
{
    const bool isFirst = m_before.completed + m_before.warned + m_before.failed == 0;
    const std::lock_guard lock(m_mutex);
    m_retrieval.result.progress = isFirst ? now : sum(m_before, now);
}

void RetrievalWork::run()
{
    bool lacksReceiver = false;
    const RetrieveResult result = fetch(lacksReceiver);
    const std::lock_guard lock(m_mutex);
    m_retrieval.needsReceiver = lacksReceiver;
    m_retrieval.result = result;
    m_retrieval.state = isStopped(result) ? RetrievalState::Cancelled : RetrievalState::Ended;
}

RetrieveResult RetrievalWork::fetch(bool &lacksReceiver)
{
    const RetrieveMethod method = m_retrieval.archive.method;
    if (method == RetrieveMethod::Move) {
        lacksReceiver = !m_isListening;
        return lacksReceiver ? RetrieveResult() : move(m_retrieval.request, {});
    }
    setUsed(RetrieveMethod::Get);
    RetrieveResult got = m_scu.get(m_retrieval.request, *m_provider);
    if (method == RetrieveMethod::Get || isStopped(got)) {
        return got;
    }
    if (!m_isListening) {
        lacksReceiver = got.failure.problem == NetworkProblem::NoContext;
        return got;
    }
    if (isUnserved(got)) {
        return moveAll(got);
    }
    return got.failure.isNone() && got.missing() > 0 ? moveRest(std::move(got)) : got;
}

RetrieveResult RetrievalWork::move(const RetrieveRequest &request, const RetrieveProgress &before)
{
    m_before = before;
    setUsed(RetrieveMethod::Move);
    return m_scu.move(request, m_options.ownAeTitle);
}

/// Everything once more; what is there already is noticed.
RetrieveResult RetrievalWork::moveAll(const RetrieveResult &got)
{
    RetrieveResult moved = move(m_retrieval.request, {});
    if (hasRun(moved) || isStopped(moved) || got.missing() == 0) {
        return moved;
    }
    RetrieveResult result = got;
    takeReason(result, moved);
    return result;
}

/// Just what has not come, where the archive has named it.
RetrieveResult RetrievalWork::moveRest(RetrieveResult got)
{
    const QStringList uids = missingOf(got);
    const QVector<RetrieveRequest> requests = namesAllMissing(got, uids.size())
        ? requestsFor(uids, m_retrieval.request, m_query)
        : QVector<RetrieveRequest>();
    if (requests.isEmpty()) {
        return moveAll(got);
    }
    for (const RetrieveRequest &request : requests) {
        const RetrieveResult moved = move(request, got.progress);
        add(got, moved, request.instanceUids);
        if (!hasRun(moved)) {
            takeReason(got, moved);
            break;
        }
    }
    if (got.progress.failed == 0 && got.failedInstances.isEmpty()) {
        got.status = 0;
    }
    return got;
}
