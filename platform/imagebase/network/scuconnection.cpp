#include "scuconnection.h"

#include <cerrno>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <dcmtk/dcmnet/assoc.h>

namespace {

constexpr int msPerSecond = 1000;

/// DCMTK writes the twelve bytes before a piece of data apart from it: in one packet with it they go faster.
bool isHeadOfData(const void *buffer, size_t length)
{
    constexpr size_t headLength = 12;
    constexpr unsigned char dataUnit = 4;
    return length == headLength && *static_cast<const unsigned char *>(buffer) == dataUnit;
}

QByteArray listenOnLoopback(int socket)
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto *generic = reinterpret_cast<sockaddr *>(&address);
    if (bind(socket, generic, length) != 0 || listen(socket, 1) != 0
        || getsockname(socket, generic, &length) != 0) {
        return {};
    }
    return "127.0.0.1:" + QByteArray::number(ntohs(address.sin_port));
}

} // namespace

ScuConnection::ScuConnection(int socket, const AbortSwitch &abort, int milliseconds, bool *timedOut)
    : DcmTCPConnection(socket)
    , m_abort(abort)
    , m_milliseconds(milliseconds)
    , m_timedOut(timedOut)
{ }

ScuConnection *ScuConnection::of(T_ASC_Association *association)
{
    return association
        ? dynamic_cast<ScuConnection *>(DUL_getTransportConnection(association->DULassociation))
        : nullptr;
}

bool ScuConnection::wait(short events)
{
    const AbortSwitch::Wait wait = m_abort.waitFor(getSocket(), events, m_milliseconds);
    *m_timedOut = *m_timedOut || wait == AbortSwitch::Wait::TimedOut;
    return wait == AbortSwitch::Wait::Ready;
}

void ScuConnection::limit(qint64 bytes, int milliseconds)
{
    m_allowed = bytes;
    m_deadline.setRemainingTime(milliseconds);
}

void ScuConnection::unlimit()
{
    m_allowed = -1;
    m_deadline = QDeadlineTimer(QDeadlineTimer::Forever);
}

ssize_t ScuConnection::read(void *buffer, size_t length)
{
    if (m_deadline.hasExpired() || (m_allowed >= 0 && qint64(length) > m_allowed)) {
        errno = EMSGSIZE;
        return -1;
    }
    while (!m_abort.isTriggered()) { // also where the peer never stops
        const ssize_t got = recv(getSocket(), buffer, length, MSG_DONTWAIT);
        if (got >= 0) {
            m_allowed = m_allowed >= 0 ? m_allowed - got : m_allowed;
            return got;
        }
        if ((errno != EAGAIN && errno != EINTR) || !wait(POLLIN)) {
            break;
        }
    }
    errno = ETIMEDOUT; // whatever it was: DCMTK would ask again after EINTR or EAGAIN
    return -1;
}

ssize_t ScuConnection::write(void *buffer, size_t length)
{
    const int more = m_isJoining || isHeadOfData(buffer, length) ? MSG_MORE : 0;
    size_t done = 0;
    while (done < length) {
        const ssize_t now = send(getSocket(), static_cast<const char *>(buffer) + done, length - done,
            MSG_NOSIGNAL | MSG_DONTWAIT | more);
        if (now >= 0) {
            done += static_cast<size_t>(now);
        } else if ((errno != EAGAIN && errno != EINTR) || !wait(POLLOUT)) {
            errno = ETIMEDOUT;
            return -1;
        }
    }
    return static_cast<ssize_t>(length);
}

OFBool ScuConnection::networkDataAvailable(int seconds)
{
    const int milliseconds = qMin(seconds * msPerSecond, m_milliseconds);
    const AbortSwitch::Wait wait = m_abort.waitFor(getSocket(), POLLIN, milliseconds);
    *m_timedOut = *m_timedOut || (wait == AbortSwitch::Wait::TimedOut && seconds > 0);
    return wait != AbortSwitch::Wait::TimedOut; // else reading tells what is wrong
}

bool ScuConnection::waitForData(int milliseconds)
{
    const AbortSwitch::Wait wait = m_abort.waitFor(getSocket(), POLLIN, milliseconds);
    return wait != AbortSwitch::Wait::TimedOut && wait != AbortSwitch::Wait::Aborted;
}

ScuTransport::ScuTransport(OwnedSocket socket, const AbortSwitch &abort, int milliseconds)
    : m_socket(std::move(socket))
    , m_listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    , m_address(listenOnLoopback(m_listener.get()))
    , m_abort(abort)
    , m_milliseconds(milliseconds)
{ }

DcmTransportConnection *ScuTransport::createConnection(
    DcmNativeSocketType openSocket, OFBool /*useSecureLayer*/)
{
    if (dup3(m_socket.get(), openSocket, O_CLOEXEC) < 0) {
        return nullptr;
    }
    m_socket = OwnedSocket();
    m_listener = OwnedSocket();
    auto *connection = new ScuConnection(openSocket, m_abort, m_milliseconds, &m_timedOut);
    connection->limit(ScuConnection::negotiationBytes, m_milliseconds);
    return connection;
}
