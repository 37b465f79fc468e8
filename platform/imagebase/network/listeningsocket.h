#pragma once

#include "storescp.h"
#include "tcpconnect.h"

/// Listens on an address of this computer. @return none with the failure set where that is impossible
OwnedSocket listenOn(const QString &address, int port, ListenFailure &failure);
/// The port that a socket is bound to, 0 where that cannot be told.
int portOf(int socket);
/// The next connection, ready to be read without waiting; none where there is none at the moment.
OwnedSocket acceptFrom(int listener);
/// Tells a peer that has asked for an association that there are too many, without reading what it asked.
void refuseBusy(int socket);
