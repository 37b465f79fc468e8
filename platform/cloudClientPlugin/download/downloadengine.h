#pragma once

#include "cloudclientplugin_export.h"
#include "downloadtally.h"
#include "importrequest.h"

#include <QObject>
#include <QThread>
#include <QVector>

#include <functional>

class DownloadCoordinator;
struct CloudSession;

/**
 * The downloads of one index, as the GUI sees them. What was begun goes on until it is through, also after a
 * kill and a new start: only what is missing is fetched again. Without a session it waits for one. GUI
 * thread; the work is done on threads of its own, which the destructor ends within a second.
 */
class CLOUDCLIENTPLUGIN_EXPORT DownloadEngine : public QObject
{
    Q_OBJECT

public:
    /// The one of databasePath(), in the session of HttpUploadFile; made where there is none, and for
    /// another index anew.
    static DownloadEngine *current();
    /// Whether there is one, and it fetches or brings something into the index.
    static bool isAnyRunning();
    /// Ends the one that there is.
    static void release();

    /// @param policy what happens where other content comes under a known UID
    explicit DownloadEngine(const QString &databasePath, DuplicatePolicy policy = DuplicatePolicy::KeepOld);
    ~DownloadEngine() override;

    void setSession(const CloudSession &session);
    /// What happens from now on where other content comes under a known UID.
    void setPolicy(DuplicatePolicy policy);
    /// Fetches what is missing of a study, also where that was tried before.
    void add(const DownloadStudy &study);
    void stop(const QString &studyUid);
    /// What was stopped or has failed.
    void resume(const QString &studyUid);
    /// Takes a study off the list; what is in the index stays there.
    void remove(const QString &studyUid);

    /// As last told, in the order of their coming.
    const QVector<DownloadTally> &tallies() const { return m_tallies; }
    bool isRunning() const;

signals:
    /// The tallies; at most five times a second.
    void changed();
    /// Objects have come into the index.
    void imported();
    /// The service does not accept the session any more; all waits for another.
    void sessionRefused();

private:
    void tell(std::function<void(DownloadCoordinator &)> deed);

    const QString m_databasePath;
    QThread m_thread;
    DownloadCoordinator *m_coordinator; ///< lives on the thread, which deletes it
    QVector<DownloadTally> m_tallies;
};
