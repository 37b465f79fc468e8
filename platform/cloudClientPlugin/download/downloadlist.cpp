#include "downloadlist.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace {

constexpr int lockWaitMs = 100; ///< whoever waits here fetches nothing meanwhile
constexpr int lastLockWaitMs = 500;

enum StoredState { Wanted = 0, Done = 1, Failed = 2, Stopped = 3 };

StoredState storedState(SeriesJob::State state)
{
    return state == SeriesJob::State::Done ? Done : state == SeriesJob::State::Failed ? Failed : Wanted;
}

SeriesJob::State stateOf(int stored)
{
    return stored == Done  ? SeriesJob::State::Done
        : stored == Failed ? SeriesJob::State::Failed
                           : SeriesJob::State::Waiting;
}

bool run(const QSqlDatabase &db, const QString &sql, const QVariantList &values)
{
    QSqlQuery query(db);
    if (!query.prepare(sql)) {
        return false;
    }
    for (const QVariant &value : values) {
        query.addBindValue(value);
    }
    return query.exec();
}

bool contains(const QVector<DownloadJob> &jobs, const QString &studyUid)
{
    return std::any_of(
        jobs.begin(), jobs.end(), [&](const DownloadJob &job) { return job.studyUid == studyUid; });
}

} // namespace

DownloadList::DownloadList(QString databasePath)
    : m_databasePath(std::move(databasePath))
{ }

DownloadList::~DownloadList()
{
    if (!m_unsaved.isEmpty() && open()) {
        IndexConnection::setLockWait(m_connection->database(), lastLockWaitMs);
        save();
    }
}

bool DownloadList::open()
{
    if (!m_connection || !m_connection->isOpen()) {
        m_connection.reset();
        m_connection = std::make_unique<IndexConnection>(m_databasePath, lockWaitMs);
    }
    return m_connection->isOpen();
}

bool DownloadList::load(QVector<DownloadJob> *jobs)
{
    if (!open()) {
        return false;
    }
    QVector<DownloadJob> stored;
    QSqlQuery query(m_connection->database());
    if (!query.exec(
            QStringLiteral("SELECT studyUID, label, state, service FROM downloadstudy ORDER BY rowid"))) {
        return false;
    }
    QStringList finished;
    while (query.next()) {
        DownloadJob job;
        job.studyUid = query.value(0).toString();
        job.label = query.value(1).toString();
        job.service = query.value(3).toString();
        job.isStopped = query.value(2).toInt() == Stopped;
        if (!loadSeries(job.studyUid, &job.series)) {
            return false; // a study without its series would pass for a finished one
        }
        if (!job.isBusy(true) && !job.isStopped && !job.hasFailed()) {
            finished.append(job.studyUid);
        } else if (!contains(*jobs, job.studyUid)) {
            stored.append(job);
        }
    }
    if (query.lastError().isValid()) {
        return false;
    }
    for (const QString &uid : qAsConst(finished)) {
        remove(uid);
    }
    *jobs = stored + *jobs;
    return true;
}

/// @return false where the index cannot be read now
bool DownloadList::loadSeries(const QString &studyUid, QVector<SeriesJob> *found) const
{
    QSqlQuery query(m_connection->database());
    if (!query.prepare(
            QStringLiteral("SELECT seriesUID, state, expected, received, reason FROM downloadseries "
                           "WHERE studyUID = ? ORDER BY rowid"))) {
        return false;
    }
    query.addBindValue(studyUid);
    if (!query.exec()) {
        return false;
    }
    while (query.next()) {
        SeriesJob series;
        series.uid = query.value(0).toString();
        series.state = stateOf(query.value(1).toInt());
        series.expected = query.isNull(2) ? -1 : query.value(2).toInt();
        series.indexed = query.value(3).toLongLong();
        series.failure.problem =
            static_cast<WebProblem>(std::clamp(query.value(4).toInt(), 0, int(WebProblem::Busy)));
        found->append(series);
    }
    return !query.lastError().isValid();
}

void DownloadList::put(const QString &sql, const QVariantList &values)
{
    m_unsaved.append({sql, values});
}

bool DownloadList::save()
{
    if (m_unsaved.isEmpty()) {
        return true;
    }
    if (!open()) {
        return false;
    }
    const QSqlDatabase db = m_connection->database();
    WriteTransaction transaction(db);
    const bool isGood = transaction.isActive()
        && std::all_of(m_unsaved.cbegin(), m_unsaved.cend(),
            [&db](const Change &change) { return run(db, change.sql, change.values); })
        && transaction.commit();
    if (isGood) {
        m_unsaved.clear();
    }
    return isGood;
}

void DownloadList::add(const DownloadJob &job)
{
    put(QStringLiteral("INSERT INTO downloadstudy (studyUID, label, state, service) VALUES (?, ?, ?, ?) "
                       "ON CONFLICT (studyUID) DO UPDATE SET label = excluded.label, state = excluded.state, "
                       "service = excluded.service"),
        {job.studyUid, job.label, int(Wanted), job.service});
    for (const SeriesJob &series : job.series) {
        put(QStringLiteral("INSERT INTO downloadseries (studyUID, seriesUID, state, expected, received) "
                           "VALUES (?, ?, ?, ?, 0) ON CONFLICT (studyUID, seriesUID) DO UPDATE SET "
                           "state = excluded.state, expected = excluded.expected"),
            {job.studyUid, series.uid, int(storedState(series.state)),
                series.expected < 0 ? QVariant(QVariant::Int) : QVariant(series.expected)});
    }
}

void DownloadList::setStopped(const DownloadJob &job)
{
    put(QStringLiteral("UPDATE downloadstudy SET state = ? WHERE studyUID = ?"),
        {int(job.isStopped ? Stopped : Wanted), job.studyUid});
}

void DownloadList::setState(const DownloadJob &job, const SeriesJob &series)
{
    put(QStringLiteral("UPDATE downloadseries SET state = ?, expected = ?, reason = ? "
                       "WHERE studyUID = ? AND seriesUID = ?"),
        {int(storedState(series.state)),
            series.expected < 0 ? QVariant(QVariant::Int) : QVariant(series.expected),
            int(series.failure.problem), job.studyUid, series.uid});
}

void DownloadList::remove(const QString &studyUid)
{
    put(QStringLiteral("DELETE FROM downloadseries WHERE studyUID = ?"), {studyUid});
    put(QStringLiteral("DELETE FROM downloadstudy WHERE studyUID = ?"), {studyUid});
}

bool DownloadList::present(const QString &seriesUid, QSet<QString> *uids)
{
    if (!open()) {
        return false;
    }
    QSqlQuery query(m_connection->database());
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT imageformat.SOPInstanceUID FROM generalseries "
                                 "JOIN imageformat ON imageformat.series_fk = generalseries.pk "
                                 "WHERE generalseries.SeriesInstanceUID = ?"));
    query.addBindValue(seriesUid);
    const bool isGood = query.exec();
    while (query.next()) {
        uids->insert(query.value(0).toString());
    }
    return isGood && !query.lastError().isValid();
}

bool DownloadList::isWanted(const QSqlDatabase &db, const QString &studyUid, const QString &seriesUid)
{
    QSqlQuery query(db);
    query.prepare(QStringLiteral("SELECT 1 FROM downloadseries WHERE studyUID = ? AND seriesUID = ?"));
    query.addBindValue(studyUid);
    query.addBindValue(seriesUid);
    return !query.exec() || query.next();
}

bool DownloadList::count(
    const QSqlDatabase &db, const QString &studyUid, const QString &seriesUid, int objects)
{
    return run(db,
        QStringLiteral(
            "UPDATE downloadseries SET received = received + ? WHERE studyUID = ? AND seriesUID = ?"),
        {objects, studyUid, seriesUid});
}
