#include "uploadrecords.h"

#include <utility>

namespace {

constexpr int flushMs = 100;
constexpr int mostUnrecorded = 2000;
constexpr int enoughOutcomes = 64; ///< to be recorded at once

} // namespace

UploadRecords::UploadRecords(const QString &databasePath, QObject *parent)
    : QObject(parent)
    , m_flushTimer(this)
    , m_recorder(new UploadRecorder(databasePath))
{
    m_flushTimer.setSingleShot(true);
    m_flushTimer.setInterval(flushMs);
    connect(&m_flushTimer, &QTimer::timeout, this, [this] { flush(); });
    m_recorder->moveToThread(&m_thread);
    connect(&m_thread, &QThread::started, m_recorder, &UploadRecorder::start);
    connect(&m_thread, &QThread::finished, m_recorder, &QObject::deleteLater);
    connect(m_recorder, &UploadRecorder::written, this, &UploadRecords::onWritten);
    connect(m_recorder, &UploadRecorder::looked, this, &UploadRecords::looked);
    connect(m_recorder, &UploadRecorder::refusing, this, [this](bool isRefusing) {
        m_isRefusing = isRefusing;
        emit refusingChanged();
    });
    m_thread.setObjectName(QStringLiteral("upload records"));
}

UploadRecords::~UploadRecords()
{
    flush();
    if (m_thread.isRunning()) {
        // Behind this the recorder has heard of everything; what it cannot write now it tries once more at
        // its end.
        QMetaObject::invokeMethod(
            m_recorder, [] {}, Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
    } else {
        delete m_recorder;
    }
}

void UploadRecords::start()
{
    m_thread.start();
}

bool UploadRecords::hasRoom() const
{
    return !m_isRefusing || m_unrecorded < mostUnrecorded;
}

void UploadRecords::write(const UploadRecorder::Write &order, const Then &then)
{
    const qint64 ticket = ++m_ticket;
    if (then) {
        m_thens.insert(ticket, then);
    }
    QMetaObject::invokeMethod(
        m_recorder, [recorder = m_recorder, order, ticket] { recorder->take(order, ticket); },
        Qt::QueuedConnection);
}

void UploadRecords::onWritten(qint64 ticket, const UploadRows &rows)
{
    const Then then = m_thens.take(ticket);
    if (then) {
        then();
    }
    if (rows) {
        emit looked(*rows);
    }
}

void UploadRecords::record(const UploadOutcome &outcome)
{
    m_outcomes.append(outcome);
    ++m_unrecorded;
    if (!m_flushTimer.isActive()) {
        m_flushTimer.start();
    }
}

void UploadRecords::flush(bool isMore)
{
    if (m_outcomes.isEmpty() || (isMore && m_outcomes.size() < enoughOutcomes)) {
        return;
    }
    const QVector<UploadOutcome> outcomes = std::exchange(m_outcomes, {});
    write([outcomes](UploadStore &store) { return store.record(outcomes); },
        [this, outcomes] {
            m_unrecorded -= outcomes.size();
            emit recorded(outcomes);
        });
}
