#include "downloadlanding.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace {

constexpr char lockName[] = ".download";
constexpr char journalName[] = "/problems.txt";

QString spoolOf(const QString &databasePath)
{
    return ObjectSpool::folderOf(databasePath, SpoolKind::Downloaded);
}

} // namespace

DownloadLanding::DownloadLanding(const QString &databasePath, DuplicatePolicy policy, QObject *parent)
    : QObject(parent)
    , m_databasePath(databasePath)
    , m_policy(policy)
    , m_ownership(databasePath + QLatin1String(lockName))
    , m_journal(spoolOf(databasePath) + QLatin1String(journalName))
    , m_recorder([this](const QVector<SpooledObject> &objects) {
        QMetaObject::invokeMethod(
            this, [this, objects] { onCommitted(objects); }, Qt::QueuedConnection);
    })
    , m_spool(databasePath, false, SpoolKind::Downloaded)
{ }

void DownloadLanding::setPolicy(DuplicatePolicy policy)
{
    m_policy = policy;
    if (m_indexer) {
        m_indexer->setPolicy(policy);
    }
}

bool DownloadLanding::hasLeftovers() const
{
    return QDir(spoolOf(m_databasePath)).exists();
}

bool DownloadLanding::open()
{
    if (m_indexer) {
        return true;
    }
    if (!m_ownership.tryToGet() || (!m_spool.isOpen() && m_spool.open() != 0)) {
        return false;
    }
    m_indexer = std::make_unique<SpoolIndexer>(m_databasePath, m_spool, m_journal, false, &m_recorder);
    m_indexer->setPolicy(m_policy);
    m_isAdopting = true;
    return true;
}

bool DownloadLanding::isReady()
{
    m_isAdopting = m_isAdopting && isBusy();
    return m_indexer && !m_isAdopting;
}

void DownloadLanding::add(const AskedSeries &series, const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    m_owners.insert(name, series);
    m_recorder.expect(name, series);
    m_indexer->add(name);
}

qint64 DownloadLanding::pending(const AskedSeries &series) const
{
    return std::count_if(m_owners.cbegin(), m_owners.cend(), [&](const AskedSeries &one) {
        return one.studyUid == series.studyUid && one.seriesUid == series.seriesUid;
    });
}

bool DownloadLanding::isBusy() const
{
    return m_indexer && m_indexer->waiting() > 0;
}

/// An object that has gone from the spool gets no verdict: nobody waits for it, when nothing waits any more.
void DownloadLanding::look()
{
    const bool isIdle = !isBusy();
    if (isIdle && m_wasIdle && !m_owners.isEmpty()) {
        m_owners.clear();
        m_recorder.forget();
        emit lost();
    }
    m_wasIdle = isIdle;
}

void DownloadLanding::onCommitted(const QVector<SpooledObject> &objects)
{
    QVector<LandedObject> verdicts;
    for (const SpooledObject &object : objects) {
        verdicts.append({m_owners.take(object.path), object.isTaken});
    }
    emit landed(verdicts);
}
