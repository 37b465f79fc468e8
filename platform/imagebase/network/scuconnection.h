#pragma once

#include "tcpconnect.h"

#include <QDeadlineTimer>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmnet/dcmlayer.h>
#include <dcmtk/dcmnet/dcmtrans.h>

struct T_ASC_Association;

/**
 * The line of an association: every wait on it has a time-out and ends when the switch is triggered, writing
 * included, and a peer that is gone raises no signal. What the peer may send can be bounded in bytes and in
 * time, as is done while a command is read; the data of an object are not bounded.
 */
class ScuConnection : public DcmTCPConnection
{
public:
    /// More than an association request with 128 services and all transfer syntaxes takes, or its answer.
    static constexpr qint64 negotiationBytes = 1 << 20;

    /// @param socket connected; becomes the object's own. @param abort outlives the object
    ScuConnection(int socket, const AbortSwitch &abort, int milliseconds, bool *timedOut);

    /// The line of an association; null where there is none any more, as DCMTK removes it with the first
    /// error.
    static ScuConnection *of(T_ASC_Association *association);

    ssize_t read(void *buffer, size_t length) override;
    /// All of it, or -1.
    ssize_t write(void *buffer, size_t length) override;
    /// While on, what is written waits for what follows, as one packet goes faster than two.
    void join(bool on) { m_isJoining = on; }
    /// From now on the peer may send this much, within this time.
    void limit(qint64 bytes, int milliseconds);
    void unlimit();
    OFBool networkDataAvailable(int seconds) override;
    /// Looks only: silence is no failure. False after the switch was triggered too.
    bool waitForData(int milliseconds);
    /// From now on every wait is this long at most.
    void setPatience(int milliseconds) { m_milliseconds = milliseconds; }

private:
    bool wait(short events);

    const AbortSwitch &m_abort;
    int m_milliseconds;
    bool *const m_timedOut;
    qint64 m_allowed = -1; ///< bytes; negative for any number
    bool m_isJoining = false;
    QDeadlineTimer m_deadline{QDeadlineTimer::Forever};
};

/**
 * Hands a socket that is already connected to DCMTK, which has no way of taking one from a requestor: it
 * connects to a listener on the loopback device that nobody accepts from, and what it got is replaced here.
 * So we know why a connection failed, can stop waiting for it, and reach IPv6 addresses.
 */
class ScuTransport : public DcmTransportLayer
{
public:
    ScuTransport(OwnedSocket socket, const AbortSwitch &abort, int milliseconds);

    /// What DCMTK is to connect to, as "address:port"; empty where the system refuses.
    QByteArray address() const { return m_address; }
    /// Whether the line was silent for too long.
    bool timedOut() const { return m_timedOut; }

    DcmTransportConnection *createConnection(DcmNativeSocketType openSocket, OFBool useSecureLayer) override;

private:
    OwnedSocket m_socket;
    OwnedSocket m_listener;
    QByteArray m_address;
    const AbortSwitch &m_abort;
    const int m_milliseconds;
    bool m_timedOut = false;
};
