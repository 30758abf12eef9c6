/* A server on this computer that answers one connection. */
#pragma once

#include <cstdint>
#include <string>
#include <thread>

class LoopbackServer {
public:
    /* Waits for a connection, reads until the blank line after the headers and `bodySize` further bytes,
     * writes `answer` and closes. */
    explicit LoopbackServer(std::string answer, size_t bodySize = 0);
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;
    ~LoopbackServer();

    [[nodiscard]] uint16_t Port() const { return port; }

    /* What it has read; waits until the connection is closed. */
    const std::string& Received();

private:
    void Serve(const std::string& answer, size_t bodySize);

    int listener;
    uint16_t port;
    std::string received;
    std::thread thread;
};
