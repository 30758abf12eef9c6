/* Where the servers of tests take their connections. */
#pragma once

#include <cstdint>
#include <functional>
#include <thread>

#include "helpers/LocalTcp.h"

/* Takes connections on a free port of 127.0.0.1, one after the other, on a thread of its own, until it is
 * destroyed. The handler must come to its end by itself. */
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
