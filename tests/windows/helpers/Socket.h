/* Owner of one socket: closes it when it goes out of scope. */
#pragma once

#include "Platform.h"
// Builds on windows.h.
#include <winsock2.h>

#include <utility>

class Socket {
public:
    /* INVALID_SOCKET: there is none to close. */
    explicit Socket(SOCKET socket) noexcept : held(socket) {}
    Socket(Socket&& other) noexcept : held(std::exchange(other.held, INVALID_SOCKET)) {}
    Socket& operator=(Socket&&) = delete;
    ~Socket() {
        if (held != INVALID_SOCKET) closesocket(held);
    }

    explicit operator bool() const noexcept { return held != INVALID_SOCKET; }

    /* Lends the socket. */
    [[nodiscard]] SOCKET Get() const noexcept { return held; }

private:
    SOCKET held;
};
