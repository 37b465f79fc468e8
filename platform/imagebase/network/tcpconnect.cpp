#include "tcpconnect.h"

#include "dicomnode.h"

#include <QDeadlineTimer>

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <thread>

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr auto lookInterval = std::chrono::milliseconds(20);

struct FreeAddresses
{
    void operator()(addrinfo *addresses) const { freeaddrinfo(addresses); }
};
using Addresses = std::unique_ptr<addrinfo, FreeAddresses>;

/// One look-up, shared with the thread that does it.
struct LookUp
{
    QByteArray host;
    QByteArray port;
    std::mutex mutex;
    std::condition_variable ended;
    bool done = false;
    Addresses addresses;

    int run(int flags)
    {
        addrinfo hints = {};
        hints.ai_socktype = SOCK_STREAM;
        hints.ai_flags = AI_NUMERICSERV | flags;
        addrinfo *found = nullptr;
        const int error = getaddrinfo(host.constData(), port.constData(), &hints, &found);
        const std::lock_guard lock(mutex);
        addresses.reset(error == 0 ? found : nullptr);
        done = true;
        ended.notify_all();
        return error;
    }
};

Addresses resolve(
    const DicomNode &node, const QDeadlineTimer &deadline, const AbortSwitch &abort, NetworkFailure &failure)
{
    const auto lookUp = std::make_shared<LookUp>();
    lookUp->host = node.host.trimmed().toUtf8();
    lookUp->port = QByteArray::number(node.port);
    if (lookUp->run(AI_NUMERICHOST) == 0) {
        return std::move(lookUp->addresses);
    }
    lookUp->done = false;
    std::thread([lookUp] { lookUp->run(AI_ADDRCONFIG); }).detach();
    std::unique_lock lock(lookUp->mutex);
    while (!lookUp->done && !abort.isTriggered() && !deadline.hasExpired()) {
        lookUp->ended.wait_for(lock, lookInterval);
    }
    if (abort.isTriggered()) {
        failure.problem = NetworkProblem::Stopped;
    } else if (!lookUp->done) {
        failure.problem = NetworkProblem::NoAnswer;
    } else if (!lookUp->addresses) {
        failure.problem = NetworkProblem::UnknownHost;
    }
    return std::move(lookUp->addresses);
}

NetworkFailure failureOf(int systemError)
{
    const bool isRefused = systemError == ECONNREFUSED;
    return {isRefused ? NetworkProblem::Refused : NetworkProblem::Unreachable, qt_error_string(systemError)};
}

OwnedSocket connectTo(
    const addrinfo &address, int milliseconds, const AbortSwitch &abort, NetworkFailure &failure)
{
    OwnedSocket socket(
        ::socket(address.ai_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, address.ai_protocol));
    const int on = 1;
    int error = 0;
    socklen_t length = sizeof error;
    if (socket.get() < 0) {
        failure = failureOf(errno);
        return OwnedSocket();
    }
    setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    if (connect(socket.get(), address.ai_addr, address.ai_addrlen) != 0 && errno != EINPROGRESS) {
        failure = failureOf(errno);
        return OwnedSocket();
    }
    const AbortSwitch::Wait wait = abort.waitFor(socket.get(), POLLOUT, milliseconds);
    if (wait != AbortSwitch::Wait::Ready) {
        failure.problem =
            wait == AbortSwitch::Wait::Aborted ? NetworkProblem::Stopped : NetworkProblem::NoAnswer;
        return OwnedSocket();
    }
    if (getsockopt(socket.get(), SOL_SOCKET, SO_ERROR, &error, &length) != 0 || error != 0) {
        failure = failureOf(error);
        return OwnedSocket();
    }
    failure = {};
    return socket;
}

} // namespace

AbortSwitch::AbortSwitch()
    : m_event(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{ }

AbortSwitch::~AbortSwitch()
{
    close(m_event);
}

void AbortSwitch::trigger()
{
    m_triggered = true;
    eventfd_write(m_event, 1);
}

AbortSwitch::Wait AbortSwitch::waitFor(int socket, short events, int milliseconds) const
{
    const QDeadlineTimer deadline(milliseconds);
    for (;;) {
        pollfd watched[] = {{socket, events, 0}, {m_event, POLLIN, 0}};
        const int ready = poll(watched, 2, static_cast<int>(deadline.remainingTime()));
        if (isTriggered()) {
            return Wait::Aborted;
        }
        if (ready > 0) {
            return Wait::Ready; // an error on the socket, too: whoever uses it sees which
        }
        if (ready == 0) {
            return Wait::TimedOut;
        }
        if (errno != EINTR) {
            return Wait::Failed;
        }
    }
}

OwnedSocket::~OwnedSocket()
{
    if (m_socket >= 0) {
        close(m_socket);
    }
}

OwnedSocket &OwnedSocket::operator=(OwnedSocket &&other) noexcept
{
    std::swap(m_socket, other.m_socket);
    return *this;
}

int OwnedSocket::release()
{
    return std::exchange(m_socket, -1);
}

OwnedSocket connectTo(
    const DicomNode &node, int milliseconds, const AbortSwitch &abort, NetworkFailure &failure)
{
    const QDeadlineTimer deadline(milliseconds);
    failure = {};
    const Addresses addresses = resolve(node, deadline, abort, failure);
    for (const addrinfo *address = addresses.get(); address; address = address->ai_next) {
        OwnedSocket socket = connectTo(*address, static_cast<int>(deadline.remainingTime()), abort, failure);
        if (socket.get() >= 0 || failure.problem == NetworkProblem::Stopped) {
            return socket;
        }
    }
    return OwnedSocket();
}
