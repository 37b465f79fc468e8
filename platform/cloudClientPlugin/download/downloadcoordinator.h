#pragma once

#include "cloudsession.h"
#include "downloadjob.h"
#include "downloadlist.h"
#include "downloadrecorder.h"
#include "objectspool.h"
#include "queueownership.h"
#include "receivejournal.h"
#include "serieslines.h"
#include "spoolindexer.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QTimer>

#include <memory>

/**
 * Works off the downloads of an index: some series at once, into a spool beside the index and from there into
 * the index. Lives on a thread of its own, on which all is called; signals come from there.
 */
class DownloadCoordinator : public QObject
{
    Q_OBJECT

public:
    DownloadCoordinator(QString databasePath, DuplicatePolicy policy);
    ~DownloadCoordinator() override;

    /// Goes on with what earlier programs left.
    void start();
    /// No session makes it wait for one.
    void setSession(const CloudSession &session);
    /// What happens from now on where other content comes under a known UID.
    void setPolicy(DuplicatePolicy policy);
    /// Fetches what is missing of a study, also where that was tried before.
    void add(const DownloadStudy &study);
    void stop(const QString &studyUid);
    void resume(const QString &studyUid);
    /// Forgets a study; what is in the index stays there.
    void remove(const QString &studyUid);

signals:
    /// At most five times a second.
    void told(const QVector<DownloadTally> &tallies);
    /// Objects have come into the index; once a second, and when a study is through.
    void imported();
    void sessionRefused();

private:
    void look();
    void work();
    bool prepare();
    bool isAtService(const DownloadJob &job) const;
    bool mayFetch();
    void pump();
    bool begin(const DownloadJob &job, SeriesJob &series);
    void onReceived(const AskedSeries &asked, const QString &path);
    void onFetched(const AskedSeries &asked, const QSet<QString> &listed, const WebFailure &failure);
    void fail(const DownloadJob &job, SeriesJob &series, const WebFailure &failure);
    void onCommitted(const QVector<SpooledObject> &objects);
    void settle(const DownloadJob &job, SeriesJob &series);
    void settleAll();
    void forgetLost();
    DownloadJob *jobOf(const QString &studyUid);
    SeriesJob *seriesOf(const AskedSeries &owner);
    bool isBusy() const;
    void wake();
    void tell();

    const QString m_databasePath;
    DuplicatePolicy m_policy;
    QElapsedTimer m_clock;
    QTimer m_timer; ///< of look()
    QTimer m_soon; ///< of work(), when something has changed
    DownloadList m_list;
    QueueOwnership m_ownership;
    ReceiveJournal m_journal;
    DownloadRecorder m_recorder;
    ObjectSpool m_spool;
    SeriesLines m_lines;
    std::unique_ptr<SpoolIndexer> m_indexer; ///< ends before what it uses
    QVector<DownloadJob> m_jobs; ///< in the order of their coming
    QHash<QByteArray, AskedSeries> m_owners; ///< of objects in the spool, by path
    CloudSession m_session;
    bool m_isLoaded = false;
    bool m_isSaved = false;
    bool m_isAdopting = false; ///< what earlier programs left is on its way into the index
    bool m_wasIdle = false; ///< at the last look, nothing waited for the index
    bool m_hasImported = false; ///< since it was last told
    qint64 m_importedMs = 0;
};
