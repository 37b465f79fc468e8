#pragma once

#include "cloudsession.h"
#include "queueownership.h"
#include "uploadhealth.h"

#include <QElapsedTimer>

class UploadJob;

/**
 * What decides whether uploads are sent at the moment: whether this is the one that sends of all programs
 * with the same index, who is signed in where, and how the service fares. For one thread.
 */
class UploadSituation
{
public:
    UploadSituation(const QString &databasePath, CloudSession session);

    /// Time is counted from here.
    void start() { m_clock.start(); }
    qint64 nowMs() const { return m_clock.elapsed(); }

    /// @return whether this program has become the one that sends
    bool tryToOwn();
    bool isOwner() const { return m_isOwner; }

    const CloudSession &session() const { return m_session; }
    void setSession(const CloudSession &session);
    /// The service takes the session no longer. @return whether that is news
    bool refuseSession();

    UploadHealth &health() { return m_health; }
    const UploadHealth &health() const { return m_health; }

    /// Whether the upload stands in the index, goes on, and somebody is signed in at its service.
    bool isRunnable(const UploadJob &job) const;

private:
    QElapsedTimer m_clock;
    QueueOwnership m_ownership;
    bool m_isOwner = false;
    CloudSession m_session;
    bool m_isSessionRefused = false;
    UploadHealth m_health;
};
