#pragma once

#include "askedseries.h"
#include "downloadjob.h"
#include "downloadlist.h"

#include <QVector>

/**
 * The downloads of an index, in the order of their coming. Each change is noted in the index, now or by a
 * later save(). On one thread.
 */
class DownloadQueue
{
public:
    explicit DownloadQueue(const QString &databasePath);

    /// Takes in what earlier programs left. @return false where the index cannot be read now
    bool load();
    /// @return whether nothing waits to be written
    bool save() { return m_isLoaded && m_list.save(); }

    QVector<DownloadJob> &jobs() { return m_jobs; }
    const QVector<DownloadJob> &jobs() const { return m_jobs; }
    /// Null where it is not, or no longer, on the list. Pointers last until studies come or go.
    DownloadJob *find(const QString &studyUid);
    SeriesJob *find(const AskedSeries &series);

    /// A study is to be fetched, also where that was tried before.
    /// @param service its address; empty where that is not known
    DownloadJob &add(const DownloadStudy &study, const QString &service);
    void stop(DownloadJob &job);
    void resume(DownloadJob &job);
    void remove(const QString &studyUid);

    /// The objects that the index has of a series. @return false where it cannot be asked now
    bool present(const QString &seriesUid, QSet<QString> *uids) { return m_list.present(seriesUid, uids); }
    /// A series is about to be fetched, where the index has so many objects of it. @return false where it has
    /// failed for good instead
    bool begin(const DownloadJob &job, SeriesJob &series, int held);
    /// A series fails, to be tried again or for good.
    void fail(const DownloadJob &job, SeriesJob &series, const WebFailure &failure, qint64 nowMs);
    /// A series is through when all that came of it has its verdict.
    void settle(const DownloadJob &job, SeriesJob &series);
    void settleAll();
    /// What waits out a pause is due.
    void endPauses();
    /// Nothing more is heard of what came and has no verdict.
    void forgetPending();

private:
    template <typename Deed>
    void forEach(const Deed &deed);

    DownloadList m_list;
    QVector<DownloadJob> m_jobs;
    bool m_isLoaded = false;
};
