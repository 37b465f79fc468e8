#pragma once

#include "cloudsession.h"
#include "downloadlanding.h"
#include "downloadqueue.h"
#include "serieslines.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

/**
 * Works off the downloads of an index: fetches some series at once, and follows what comes of them until the
 * index has it. Lives on a thread of its own, on which all is called; signals come from there.
 */
class DownloadCoordinator : public QObject
{
    Q_OBJECT

public:
    DownloadCoordinator(const QString &databasePath, DuplicatePolicy policy);
    ~DownloadCoordinator() override;

    /// Goes on with what earlier programs left.
    void start() { wake(); }
    /// No session makes it wait for one.
    void setSession(const CloudSession &session);
    /// What happens from now on where other content comes under a known UID.
    void setPolicy(DuplicatePolicy policy) { m_landing.setPolicy(policy); }
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
    bool isAtService(const DownloadJob &job) const;
    bool mayFetch();
    void pump();
    bool begin(const DownloadJob &job, SeriesJob &series);
    void onReceived(const AskedSeries &asked, const QString &path);
    void onProgressed(const AskedSeries &asked, qint64 bytes);
    void onFetched(const AskedSeries &asked, const QSet<QString> &listed, const WebFailure &failure);
    void onRefused();
    void onLanded(const QVector<LandedObject> &objects);
    bool isBusy() const;
    void wake();
    void tell();

    QElapsedTimer m_clock;
    QTimer m_timer; ///< of look()
    QTimer m_soon; ///< of work(), when something has changed
    DownloadQueue m_queue;
    DownloadLanding m_landing;
    SeriesLines m_lines; ///< end before the landing
    CloudSession m_session;
    QString m_service; ///< the address of the last session that was open
    bool m_isSaved = false;
    bool m_hasImported = false; ///< since it was last told
    qint64 m_importedMs = 0;
};
