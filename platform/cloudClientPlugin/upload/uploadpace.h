#pragma once

#include "cloudclientplugin_export.h"

#include <QtGlobal>

/**
 * How much is sent at once: climbs to where the service acknowledges most. It changes one thing at a time,
 * the number of requests or the bytes of one, keeps what was better and takes back what was not; after a
 * round without gain it rests, each time longer, and then looks again. Objects count as some bytes more, so
 * that both large and small ones give a rate to compare. Knows no clock: the caller tells the time.
 */
class CLOUDCLIENTPLUGIN_EXPORT UploadPace
{
public:
    int requests() const;
    /// A request takes objects until it has as many bytes; one at least.
    qint64 batchBytes() const;
    /// But never more of them than this.
    int batchObjects() const;

    /// A request has come back with what the service has acknowledged of it.
    void acknowledged(qint64 bytes, int objects, qint64 nowMs);
    /// There was nothing more to send, or the service was in trouble: what is being measured tells nothing.
    void interrupted() { m_left = windowUnset; }

private:
    enum Move { MoreRequests, MoreBytes, FewerRequests, LessBytes, Moves };

    static constexpr int windowUnset = -1;

    bool apply(int move);
    int objectsAt(int step) const;
    void judge(double rate, qint64 nowMs);
    void tryNext(qint64 nowMs);
    void startWindow();

    int m_requestsAt = 5;
    int m_bytesAt = 1;
    int m_triedRequestsAt = 5; ///< what to go back to
    int m_triedBytesAt = 1;
    bool m_isTrying = false;
    double m_objectBytes = 0; ///< what an object has of late
    int m_move = MoreRequests;
    int m_failedMoves = 0;
    double m_best = 0; ///< the rate of what is kept
    qint64 m_restUntilMs = 0;
    qint64 m_restMs = 0;

    int m_left = windowUnset; ///< requests of the setting before that are still to come back
    qint64 m_beganMs = 0;
    double m_score = 0;
    int m_counted = 0;
};
