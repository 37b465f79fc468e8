#pragma once

#include "storerequest.h"
#include "uploadbatch.h"
#include "uploadpace.h"
#include "uploadtrouble.h"

/// How the service fares, told by its answers: how much it is to be sent at once, and when it is left alone.
/// What comes back from the session before says nothing. Knows no clock; for one thread.
class UploadHealth
{
public:
    /// @param isElsewhere whether it is another service's
    void beginSession(bool isElsewhere);
    quint64 session() const { return m_session; }
    quint64 acknowledgements() const { return m_acknowledgements; }

    /// @param isLeft whether nothing but objects that have failed before is left to ask with
    void note(const UploadBatch &batch, const StoreAnswer &answer, bool isLeft, qint64 nowMs);
    /// Has it acknowledged anything about then, or since?
    bool wasWellAt(qint64 ms) const;

    /// Nothing is to be sent for a while.
    void rest() { m_pace.interrupted(); }
    void forgive() { m_trouble.clear(); }
    void hurry() { m_trouble.hurry(); }
    bool isInTrouble() const { return !m_trouble.isNone(); }
    const WebFailure &trouble() const { return m_trouble.failure(); }
    bool mustWait(qint64 nowMs) const { return m_trouble.mustWait(nowMs); }
    qint64 waitsUntilMs() const { return m_trouble.untilMs(); }
    int mostRequests() const { return isInTrouble() ? 1 : m_pace.requests(); }
    int mostObjects() const { return isInTrouble() ? 1 : m_pace.batchObjects(); }
    qint64 mostBytes() const { return m_pace.batchBytes(); }

private:
    void noteAcknowledged(const UploadBatch &batch, const StoreAnswer &answer, qint64 nowMs);

    UploadPace m_pace;
    UploadTrouble m_trouble;
    quint64 m_session = 0;
    quint64 m_acknowledgements = 0;
    qint64 m_acknowledgedMs = 0; ///< when the last one came
    bool m_isProven = false; ///< by an acknowledgement of this service
};
