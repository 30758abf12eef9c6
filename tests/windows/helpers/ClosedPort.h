/* A port at which nobody answers. */
#pragma once

#include "helpers/LocalTcp.h"

/* A port of this machine that is bound, so that nobody else can take it, but not listened to. */
class ClosedPort {
public:
    [[nodiscard]] uint16_t Number() const { return PortOf(socket.Get()); }

private:
    SocketLibrary library;
    Socket socket = BoundSocket();
};
