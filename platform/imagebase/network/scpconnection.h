#pragma once

#include "scuconnection.h"

#include <dcmtk/ofstd/ofcond.h>

struct T_ASC_Association;
struct T_ASC_Network;

/// The line of an association that a peer requested.
class ScpConnection : public ScuConnection
{
public:
    ScpConnection(int socket, const AbortSwitch &abort, int milliseconds);

private:
    bool m_timedOut = false;
};

/**
 * Hands sockets that we have accepted ourselves to DCMTK. It takes them from a variable of the process: that
 * is set only for the moment until it has made its connection, so a peer that never speaks holds up nobody.
 * Lives on the thread of one association.
 */
class ScpTransport : public DcmTransportLayer
{
public:
    ScpTransport(OwnedSocket socket, const AbortSwitch &abort, int milliseconds);
    ~ScpTransport() override;

    /// Waits for the association request and reads it. @return DCMTK's condition; the association may be
    /// there even where it is bad, and is the caller's
    OFCondition receive(T_ASC_Association **association, int seconds, long longestPdu);
    DcmTransportConnection *createConnection(DcmNativeSocketType openSocket, OFBool useSecureLayer) override;

private:
    void giveBack();

    OwnedSocket m_socket;
    const AbortSwitch &m_abort;
    const int m_milliseconds;
    T_ASC_Network *m_network = nullptr;
    bool m_holdsVariable = false;
};
