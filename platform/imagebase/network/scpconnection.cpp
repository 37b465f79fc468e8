#include "scpconnection.h"

#include <mutex>

#include <dcmtk/dcmnet/assoc.h>

namespace {

/// Of those who want to set DCMTK's variable.
std::mutex &variableMutex()
{
    static std::mutex mutex;
    return mutex;
}

constexpr DcmNativeSocketType noSocket = -1;

} // namespace

ScpConnection::ScpConnection(int socket, const AbortSwitch &abort, int milliseconds)
    : ScuConnection(socket, abort, milliseconds, &m_timedOut)
{ }

ScpTransport::ScpTransport(OwnedSocket socket, const AbortSwitch &abort, int milliseconds)
    : m_socket(std::move(socket))
    , m_abort(abort)
    , m_milliseconds(milliseconds)
{ }

ScpTransport::~ScpTransport()
{
    if (m_network) {
        ASC_dropNetwork(&m_network);
    }
}

OFCondition ScpTransport::receive(T_ASC_Association **association, int seconds, long longestPdu)
{
    variableMutex().lock();
    m_holdsVariable = true;
    dcmExternalSocketHandle.set(m_socket.get());
    OFCondition result = ASC_initializeNetwork(NET_ACCEPTOR, 0, seconds, &m_network);
    if (result.good()) {
        ASC_setTransportLayer(m_network, this, 0);
        result = ASC_receiveAssociation(m_network, association, longestPdu);
    }
    giveBack();
    return result;
}

void ScpTransport::giveBack()
{
    if (m_holdsVariable) {
        dcmExternalSocketHandle.set(noSocket);
        m_holdsVariable = false;
        variableMutex().unlock();
    }
}

DcmTransportConnection *ScpTransport::createConnection(
    DcmNativeSocketType openSocket, OFBool /*useSecureLayer*/)
{
    giveBack();
    m_socket.release();
    auto *connection = new ScpConnection(openSocket, m_abort, m_milliseconds);
    connection->limit(ScuConnection::negotiationBytes, m_milliseconds);
    return connection;
}
