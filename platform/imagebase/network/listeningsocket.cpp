#include "listeningsocket.h"

#include "systemtext.h"

#include <cerrno>
#include <memory>

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace {

constexpr int backlog = 256;

ListenFailure failureOf(int error)
{
    using Reason = ListenFailure::Reason;
    const QString word = systemText(error);
    switch (error) {
    case EADDRINUSE:
        return {Reason::PortBusy, word};
    case EACCES:
    case EPERM:
        return {Reason::NotAllowed, word};
    case EADDRNOTAVAIL:
    case EAFNOSUPPORT:
        return {Reason::BadAddress, word};
    default:
        return {Reason::Other, word};
    }
}

} // namespace

OwnedSocket listenOn(const QString &address, int port, ListenFailure &failure)
{
    addrinfo hints = {};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV | AI_PASSIVE;
    addrinfo *found = nullptr;
    const int error =
        getaddrinfo(address.toLatin1().constData(), QByteArray::number(port).constData(), &hints, &found);
    if (error != 0) {
        failure = {ListenFailure::Reason::BadAddress, QString::fromLocal8Bit(gai_strerror(error))};
        return OwnedSocket();
    }
    const std::unique_ptr<addrinfo, void (*)(addrinfo *)> addresses(found, freeaddrinfo);
    OwnedSocket listener(socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const int on = 1;
    // A port whose last connections still fade away is free.
    setsockopt(listener.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    if (listener.get() < 0 || bind(listener.get(), found->ai_addr, found->ai_addrlen) != 0
        || listen(listener.get(), backlog) != 0) {
        failure = failureOf(errno);
        return OwnedSocket();
    }
    return listener;
}

int portOf(int socket)
{
    sockaddr_storage address = {};
    socklen_t length = sizeof address;
    if (getsockname(socket, reinterpret_cast<sockaddr *>(&address), &length) != 0) {
        return 0;
    }
    return ntohs(address.ss_family == AF_INET6 ? reinterpret_cast<sockaddr_in6 &>(address).sin6_port
                                               : reinterpret_cast<sockaddr_in &>(address).sin_port);
}

OwnedSocket acceptFrom(int listener)
{
    OwnedSocket socket(accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
    if (socket.get() >= 0) {
        const int on = 1;
        setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        setsockopt(socket.get(), SOL_SOCKET, SO_KEEPALIVE, &on, sizeof on);
    }
    return socket;
}

void refuseBusy(int socket)
{
    // A-ASSOCIATE-RJ: transient, by the provider, local limit exceeded.
    constexpr unsigned char rejection[] = {3, 0, 0, 0, 0, 4, 0, 2, 3, 2};
    char rest[4096];
    // What was not read would make the system take the answer back.
    while (recv(socket, rest, sizeof rest, MSG_DONTWAIT) > 0) { }
    send(socket, rejection, sizeof rejection, MSG_NOSIGNAL | MSG_DONTWAIT);
    shutdown(socket, SHUT_WR);
}
