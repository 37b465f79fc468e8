#include "downloadrecorder.h"

#include "downloadlist.h"

#include <QMap>
#include <QSqlQuery>
#include <QVariant>

namespace {

using SeriesOfStudy = QPair<QString, QString>; ///< the UIDs of a study and of a series

/// A series counts what the index has of it, and from then on what comes.
bool enterSeries(const QSqlDatabase &db, const QString &seriesUid)
{
    QSqlQuery query(db);
    query.prepare(QStringLiteral("INSERT INTO series (seriesUID, recvnum) "
                                 "SELECT :uid, sum(NumberOfSeriesRelatedInstances) FROM generalseries "
                                 "WHERE SeriesInstanceUID = :uid HAVING count(*) > 0 "
                                 "ON CONFLICT (seriesUID) DO NOTHING"));
    query.bindValue(QStringLiteral(":uid"), seriesUid);
    return query.exec();
}

} // namespace

DownloadRecorder::DownloadRecorder(Committed onCommitted)
    : m_onCommitted(std::move(onCommitted))
{ }

void DownloadRecorder::expect(const QByteArray &path, const AskedSeries &series)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_expected.insert(path, series);
}

void DownloadRecorder::forget()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_expected.clear();
}

/// What an earlier program has left may be of any series that is wanted.
bool DownloadRecorder::accepts(const QSqlDatabase &db, const SpooledObject &object)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto asked = m_expected.constFind(object.path);
    return asked == m_expected.constEnd()
        ? DownloadList::isWanted(db, object.studyUid, object.seriesUid)
        : asked->studyUid == object.studyUid && asked->seriesUid == object.seriesUid;
}

void DownloadRecorder::committed(const QVector<SpooledObject> &objects)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        for (const SpooledObject &object : objects) {
            m_expected.remove(object.path);
        }
    }
    m_onCommitted(objects);
}

bool DownloadRecorder::record(const QSqlDatabase &db, const QVector<SpooledObject> &objects)
{
    QMap<SeriesOfStudy, int> counts;
    QSqlQuery enter(db);
    QSqlQuery flag(db);
    if (!enter.prepare(
            QStringLiteral("INSERT OR IGNORE INTO images (SOPInstanceUID, seriesUID) VALUES (?, ?)"))
        || !flag.prepare(
            QStringLiteral("UPDATE images SET Cloudflag = 1 WHERE SOPInstanceUID = ? AND Cloudflag = 0"))) {
        return false;
    }
    for (const SpooledObject &object : objects) {
        if (!object.isTaken) {
            continue;
        }
        int &count = counts[{object.studyUid, object.seriesUid}];
        if (count++ == 0 && !enterSeries(db, object.seriesUid)) {
            return false;
        }
        enter.bindValue(0, object.sopInstanceUid);
        enter.bindValue(1, object.seriesUid);
        flag.bindValue(0, object.sopInstanceUid);
        if (!enter.exec() || !flag.exec()) {
            return false;
        }
    }
    for (auto one = counts.cbegin(); one != counts.cend(); ++one) {
        if (!DownloadList::count(db, one.key().first, one.key().second, one.value())) {
            return false;
        }
    }
    return true;
}
