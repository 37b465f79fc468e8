#include "retrievalservice.h"

#include "receiveservice.h"
#include "retrievalwork.h"

#include <algorithm>

namespace {

constexpr int lookMs = 200;
} // namespace

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
            m_work = std::make_unique<RetrievalWork>(retrieval, provider, m_receiving->status().listening);
            m_work->start();
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
        m_work.reset();
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
        m_work->cancel();
    }
}

void RetrievalService::retry(qint64 id)
{
    Retrieval *retrieval = find(id);
    if (retrieval && retrieval->isOver()) {
        retrieval->held = qMax(retrieval->held, retrieval->result.progress.completed);
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
        m_work->abort();
        m_work.reset();
    }
    m_timer.stop();
    emit changed();
}
