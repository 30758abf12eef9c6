#include "helpers/LocalListener.h"

#include <stdexcept>
#include <utility>

LocalListener::LocalListener(Handler connectionHandler)
    : listening(BoundSocket()), handler(std::move(connectionHandler)) {
    if (listen(listening.Get(), SOMAXCONN) != 0) throw std::runtime_error("the port cannot be listened to");
    thread = std::jthread([this](const std::stop_token& stop) { Run(stop); });
}

LocalListener::~LocalListener() {
    thread.request_stop();
    // A connection wakes the thread from its wait for one.
    ConnectedSocket(Port());
}

void LocalListener::Run(const std::stop_token& stop) {
    for (;;) {
        Socket connection(accept(listening.Get(), nullptr, nullptr));
        if (stop.stop_requested()) return;
        if (connection) handler(std::move(connection));
    }
}
