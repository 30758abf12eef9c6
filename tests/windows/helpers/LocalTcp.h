/* TCP on this machine. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "helpers/Socket.h"

/* Loads Windows' sockets for as long as it lives; whoever uses sockets has one. */
class SocketLibrary {
public:
    SocketLibrary();
    ~SocketLibrary();
    SocketLibrary(const SocketLibrary&) = delete;
    SocketLibrary& operator=(const SocketLibrary&) = delete;
};

/* A socket bound to a free port of 127.0.0.1. Throws std::runtime_error, as do the functions below that say
 * so. */
Socket BoundSocket();

uint16_t PortOf(SOCKET socket);

/* A connection to a port of this machine. Throws std::runtime_error. */
Socket ConnectedSocket(uint16_t port);

/* Sends all of `bytes`; false when the other side has gone. While it runs, no call on the socket waits. */
bool SendAll(SOCKET socket, std::string_view bytes);

/* The bytes of the next receipt, or nothing at the end or after an error. */
std::optional<std::string> ReceiveSome(SOCKET socket);

/* Closes in a way that the other side sees as a reset, whatever it has or has not read. */
void ResetConnection(Socket socket);
