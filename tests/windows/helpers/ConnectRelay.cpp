#include "helpers/ConnectRelay.h"

#include <utility>

namespace {

std::string ReceiveHead(SOCKET socket) {
    std::string head;
    while (head.find("\r\n\r\n") == std::string::npos) {
        const std::optional<std::string> some = ReceiveSome(socket);
        if (!some) return {};
        head += *some;
    }
    return head;
}

bool PassOn(SOCKET from, SOCKET to) {
    const std::optional<std::string> some = ReceiveSome(from);
    return some && SendAll(to, *some);
}

}  // namespace

ConnectRelay::ConnectRelay(uint16_t serverPort)
    : server(serverPort), listener([this](const Socket& client) { Handle(client); }) {}

std::vector<std::string> ConnectRelay::TakeRequestLines() {
    const std::lock_guard lock(mutex);
    return std::exchange(lines, {});
}

void ConnectRelay::Handle(const Socket& client) {
    const std::string head = ReceiveHead(client.Get());
    if (head.empty()) return;
    {
        const std::lock_guard lock(mutex);
        lines.push_back(head.substr(0, head.find("\r\n")));
    }
    const Socket connection = ConnectedSocket(server);
    if (!SendAll(client.Get(), "HTTP/1.1 200 Connection established\r\n\r\n")) return;
    PassBothWays(client.Get(), connection.Get());
}

/* Until one of them ends the connection, or the relay's end is near. */
void ConnectRelay::PassBothWays(SOCKET one, SOCKET other) const {
    while (!ending) {
        fd_set readable;
        FD_ZERO(&readable);
        FD_SET(one, &readable);
        FD_SET(other, &readable);
        timeval betweenLooks{0, 20'000};
        if (select(0, &readable, nullptr, nullptr, &betweenLooks) < 0) return;
        if (FD_ISSET(one, &readable) && !PassOn(one, other)) return;
        if (FD_ISSET(other, &readable) && !PassOn(other, one)) return;
    }
}
