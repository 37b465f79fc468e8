#include "indexwatchworker.h"

#include "attributes.h"
#include "indexconnection.h"

#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace {

constexpr int lookIntervalMs = 300;
constexpr qint64 countPauseAtLeastMs = 500;
constexpr qint64 countPauseFactor = 20;

qint64 rowsOf(const QSqlDatabase &db, RecordLevel level)
{
    QSqlQuery query(db);
    query.setForwardOnly(true);
    const bool good =
        query.exec(QStringLiteral("SELECT count(*) FROM %1").arg(QLatin1String(recordTableName(level))));
    return good && query.next() ? query.value(0).toLongLong() : -1;
}

} // namespace

IndexWatchWorker::IndexWatchWorker(const QString &databasePath)
    : m_databasePath(databasePath)
    , m_timer(new QTimer(this))
{
    m_timer->setInterval(lookIntervalMs);
    connect(m_timer, &QTimer::timeout, this, &IndexWatchWorker::look);
}

IndexWatchWorker::~IndexWatchWorker() = default;

void IndexWatchWorker::start()
{
    m_connection = std::make_unique<IndexConnection>(m_databasePath);
    if (m_connection->isOpen()) {
        m_timer->start();
        look();
    }
}

void IndexWatchWorker::look()
{
    const qint64 version = dataVersion();
    if (version != m_version) {
        const bool first = m_version == -1;
        m_version = version;
        m_countDue = true;
        if (!first) {
            emit changed();
        }
    }
    if (m_countDue && (!m_sinceCount.isValid() || m_sinceCount.elapsed() >= m_countPause)) {
        count();
    }
}

void IndexWatchWorker::count()
{
    if (!m_connection || !m_connection->isOpen()) {
        return;
    }
    QElapsedTimer cost;
    cost.start();
    const QSqlDatabase db = m_connection->database();
    IndexCounts counts;
    counts.patients = rowsOf(db, RecordLevel::Patient);
    counts.studies = rowsOf(db, RecordLevel::Study);
    counts.series = rowsOf(db, RecordLevel::Series);
    counts.images = rowsOf(db, RecordLevel::Image);
    m_countDue = false;
    m_countPause = std::max(countPauseAtLeastMs, cost.elapsed() * countPauseFactor);
    m_sinceCount.start();
    emit counted(counts);
}

/// Changes with every commit of another connection, and costs no read of the tables.
qint64 IndexWatchWorker::dataVersion() const
{
    QSqlQuery query(m_connection->database());
    return query.exec(QStringLiteral("PRAGMA data_version")) && query.next() ? query.value(0).toLongLong()
                                                                             : m_version;
}
