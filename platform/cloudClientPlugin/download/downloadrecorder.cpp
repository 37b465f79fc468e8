#include "downloadrecorder.h"

#include "downloadlist.h"
#include "transfertables.h"

#include <QMap>

namespace {

using SeriesOfStudy = QPair<QString, QString>; ///< the UIDs of a study and of a series

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
    TransferTables tables(db);
    QMap<SeriesOfStudy, int> counts;
    for (const SpooledObject &object : objects) {
        if (!object.isTaken) {
            continue;
        }
        int &count = counts[{object.studyUid, object.seriesUid}];
        if ((count++ == 0 && !tables.enterSeries(object.seriesUid))
            || !tables.enterImage(object.sopInstanceUid, object.seriesUid)
            || !tables.flag(object.sopInstanceUid)) {
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
