#include "network/LoopbackServer.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

namespace {

sockaddr_in Loopback() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

int Listener() {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = Loopback();
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener, 1) != 0)
        throw std::runtime_error("the server cannot listen");
    return listener;
}

uint16_t PortOf(int listener) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

}  // namespace

LoopbackServer::LoopbackServer(std::string answer, size_t bodySize)
    : listener(Listener()),
      port(PortOf(listener)),
      thread([this, answer = std::move(answer), bodySize] { Serve(answer, bodySize); }) {}

LoopbackServer::~LoopbackServer() {
    // Wakes the thread when nobody has connected.
    shutdown(listener, SHUT_RDWR);
    if (thread.joinable()) thread.join();
    close(listener);
}

const std::string& LoopbackServer::Received() {
    thread.join();
    return received;
}

void LoopbackServer::Serve(const std::string& answer, size_t bodySize) {
    const int connection = accept(listener, nullptr, nullptr);
    if (connection < 0) return;
    const auto isWhole = [&] {
        const size_t end = received.find("\r\n\r\n");
        return end != std::string::npos && received.size() >= end + 4 + bodySize;
    };
    char bytes[1000];
    while (!isWhole()) {
        const ssize_t count = read(connection, bytes, sizeof bytes);
        if (count <= 0) break;
        received.append(bytes, static_cast<size_t>(count));
    }
    send(connection, answer.data(), answer.size(), MSG_NOSIGNAL);
    close(connection);
}
