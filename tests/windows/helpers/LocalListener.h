/* TCP on this machine, for the servers of tests. */
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "helpers/Socket.h"

/* Loads Windows' sockets for as long as it lives; every class below has one. */
class SocketLibrary {
public:
    SocketLibrary();
    ~SocketLibrary();
    SocketLibrary(const SocketLibrary&) = delete;
    SocketLibrary& operator=(const SocketLibrary&) = delete;
};

/* A socket bound to a free port of 127.0.0.1. Throws std::runtime_error, as do the functions below that say so. */
Socket BoundSocket();

uint16_t PortOf(SOCKET socket);

/* A connection to a port of this machine. Throws std::runtime_error. */
Socket ConnectedSocket(uint16_t port);

/* Sends all of `bytes`; false when the other side has gone. */
bool SendAll(SOCKET socket, std::string_view bytes);

/* The bytes of the next receipt, or nothing at the end or after an error. */
std::optional<std::string> ReceiveSome(SOCKET socket);

/* Closes in a way that the other side sees as a reset, whatever it has or has not read. */
void ResetConnection(Socket socket);

/* Takes connections on a free port of 127.0.0.1, one after the other, on a thread of its own, until it is destroyed.
 * The handler must come to its end by itself. */
class LocalListener {
public:
    using Handler = std::function<void(Socket)>;

    explicit LocalListener(Handler connectionHandler);
    ~LocalListener();
    LocalListener(const LocalListener&) = delete;
    LocalListener& operator=(const LocalListener&) = delete;

    [[nodiscard]] uint16_t Port() const { return PortOf(listening.Get()); }

private:
    void Run(const std::stop_token& stop);

    SocketLibrary library;
    Socket listening;
    Handler handler;
    std::jthread thread;
};
