#pragma once

#include "networkfailure.h"

#include <atomic>

struct DicomNode;

/// Ends, from any thread, whatever waits on it; it stays ended.
class AbortSwitch
{
public:
    AbortSwitch();
    ~AbortSwitch();
    AbortSwitch(const AbortSwitch &) = delete;
    AbortSwitch &operator=(const AbortSwitch &) = delete;

    void trigger();
    bool isTriggered() const { return m_triggered.load(); }

    enum class Wait { Ready, TimedOut, Aborted, Failed };
    /// Waits until a socket can be read or written (poll()'s events).
    Wait waitFor(int socket, short events, int milliseconds) const;

private:
    const int m_event;
    std::atomic<bool> m_triggered{false};
};

/// A socket that closes itself; -1 where there is none.
class OwnedSocket
{
public:
    explicit OwnedSocket(int socket = -1)
        : m_socket(socket)
    { }
    ~OwnedSocket();
    OwnedSocket(OwnedSocket &&other) noexcept
        : m_socket(other.release())
    { }
    OwnedSocket &operator=(OwnedSocket &&other) noexcept;
    OwnedSocket(const OwnedSocket &) = delete;
    OwnedSocket &operator=(const OwnedSocket &) = delete;

    int get() const { return m_socket; }
    int release();

private:
    int m_socket;
};

/// Connects to a node within a time, over IPv4 or IPv6, each of its addresses in turn. A name is looked up on
/// a thread that is left behind where the resolver hangs. @return the socket, Nagle's algorithm off, or none
/// with the failure set
OwnedSocket connectTo(
    const DicomNode &node, int milliseconds, const AbortSwitch &abort, NetworkFailure &failure);
