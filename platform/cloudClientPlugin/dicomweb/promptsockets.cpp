#include "promptsockets.h"

#include <dirent.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <cstdlib>
#include <memory>

namespace {

/// Of a connection's other end; 0 where the number is no connection.
quint16 peerPort(int file)
{
    sockaddr_storage peer{};
    socklen_t length = sizeof peer;
    if (getpeername(file, reinterpret_cast<sockaddr *>(&peer), &length) != 0) {
        return 0;
    }
    if (peer.ss_family == AF_INET) {
        return ntohs(reinterpret_cast<const sockaddr_in *>(&peer)->sin_port);
    }
    return peer.ss_family == AF_INET6 ? ntohs(reinterpret_cast<const sockaddr_in6 *>(&peer)->sin6_port) : 0;
}

} // namespace

void PromptSockets::toPort(quint16 port)
{
    const std::unique_ptr<DIR, int (*)(DIR *)> folder(opendir("/proc/self/fd"), closedir);
    while (const dirent *entry = folder ? readdir(folder.get()) : nullptr) {
        const int file = std::atoi(entry->d_name);
        if (file > 0 && peerPort(file) == port) {
            const int on = 1;
            setsockopt(file, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        }
    }
}
