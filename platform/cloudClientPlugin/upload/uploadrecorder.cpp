#include "uploadrecorder.h"

namespace {

constexpr int lockWaitMs = 1000;
constexpr int againMs = 250;
constexpr int lookMs = 500;

} // namespace

UploadRecorder::UploadRecorder(QString databasePath)
    : m_store(std::move(databasePath), lockWaitMs)
    , m_again(this)
    , m_look(this)
{
    qRegisterMetaType<QVector<UploadRow>>();
    qRegisterMetaType<UploadRows>();
    m_again.setSingleShot(true);
    m_again.setInterval(againMs);
    m_look.setInterval(lookMs);
    connect(&m_again, &QTimer::timeout, this, &UploadRecorder::carryOut);
    connect(&m_look, &QTimer::timeout, this, &UploadRecorder::look);
}

UploadRecorder::~UploadRecorder()
{
    carryOut();
}

void UploadRecorder::start()
{
    look();
    m_look.start();
}

void UploadRecorder::take(const Write &write, qint64 ticket)
{
    m_orders.push_back({write, ticket});
    if (!m_again.isActive()) {
        carryOut();
    }
}

void UploadRecorder::carryOut()
{
    while (!m_orders.empty()) {
        if (!m_store.open() || !m_orders.front().write(m_store)) {
            tell(true);
            m_again.start();
            return;
        }
        const qint64 ticket = m_orders.front().ticket;
        m_orders.pop_front();
        tell(false);
        emit written(ticket, m_store.tasks());
    }
}

void UploadRecorder::look()
{
    if (!m_store.open()) {
        tell(true);
        return;
    }
    const qint64 version = m_store.dataVersion();
    if (!m_hasLooked || version != m_version) {
        const UploadRows rows = m_store.tasks();
        m_hasLooked = rows.has_value();
        m_version = version;
        if (rows) {
            emit looked(*rows);
        }
    }
    if (m_orders.empty()) {
        tell(false);
    }
}

void UploadRecorder::tell(bool isRefusing)
{
    if (std::exchange(m_isRefusing, isRefusing) != isRefusing) {
        emit refusing(isRefusing);
    }
}
