#include "scpconnection.h"

#include <cerrno>
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
/// More than 128 services with all transfer syntaxes of the standard take.
constexpr qint64 requestBytes = 1 << 20;

} // namespace

ScpConnection::ScpConnection(int socket, const AbortSwitch &abort, int milliseconds)
    : ScuConnection(socket, abort, milliseconds, &m_timedOut)
{ }

void ScpConnection::limit(qint64 bytes, int milliseconds)
{
    m_allowed = bytes;
    m_deadline.setRemainingTime(milliseconds);
}

void ScpConnection::unlimit()
{
    m_allowed = -1;
    m_deadline = QDeadlineTimer(QDeadlineTimer::Forever);
}

ssize_t ScpConnection::read(void *buffer, size_t length)
{
    if (m_deadline.hasExpired() || (m_allowed >= 0 && qint64(length) > m_allowed)) {
        errno = EMSGSIZE;
        return -1;
    }
    const ssize_t got = ScuConnection::read(buffer, length);
    if (got < 0) {
        errno = ETIMEDOUT; // whatever it was, asking again is of no use
    } else if (m_allowed >= 0) {
        m_allowed -= got;
    }
    return got;
}

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
    m_connection = new ScpConnection(openSocket, m_abort, m_milliseconds);
    m_connection->limit(requestBytes, m_milliseconds);
    return m_connection;
}
