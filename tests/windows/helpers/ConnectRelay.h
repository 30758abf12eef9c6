/* A web proxy of a test's own, for HTTPS: it opens a way to one server, whatever host it is asked for. */
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <vector>

#include "helpers/LocalListener.h"

class ConnectRelay {
public:
    /* Relays to a port of this machine. */
    explicit ConnectRelay(uint16_t serverPort);

    /* Cuts a connection that is still open: a client may keep one for later use. */
    ~ConnectRelay() { ending = true; }
    ConnectRelay(const ConnectRelay&) = delete;
    ConnectRelay& operator=(const ConnectRelay&) = delete;

    [[nodiscard]] uint16_t Port() const { return listener.Port(); }

    /* The request lines since the last call, such as "CONNECT host:443 HTTP/1.1". */
    std::vector<std::string> TakeRequestLines();

private:
    void Handle(const Socket& client);
    void PassBothWays(SOCKET one, SOCKET other) const;

    uint16_t server;
    std::atomic<bool> ending = false;
    std::mutex mutex;  // guards the lines
    std::vector<std::string> lines;
    LocalListener listener;  // the last: its thread uses the others
};
