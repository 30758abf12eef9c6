#include "HttpConnection.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace {

// Only so that a service that hangs fails the test.
constexpr int patienceMilliseconds = 20000;

size_t ContentLength(const std::string& headers) {
    constexpr std::string_view name = "\r\nContent-Length: ";
    const size_t position = ("\r\n" + headers).find(name);
    if (position == std::string::npos) return 0;
    return std::strtoul(headers.c_str() + position + name.size() - 2, nullptr, 10);
}

}  // namespace

HttpConnection::HttpConnection(int port) : socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
}

HttpConnection::~HttpConnection() {
    close(socket);
}

void HttpConnection::Send(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        ASSERT_GT(sent, 0);
        bytes.remove_prefix(static_cast<size_t>(sent));
    }
}

bool HttpConnection::Receive() {
    pollfd waiting{socket, POLLIN, 0};
    if (poll(&waiting, 1, patienceMilliseconds) != 1) {
        ADD_FAILURE() << "the service neither answers nor closes the connection";
        return false;
    }
    std::array<char, 65536> bytes{};
    const ssize_t count = recv(socket, bytes.data(), bytes.size(), 0);
    if (count <= 0) return false;
    received.append(bytes.data(), static_cast<size_t>(count));
    return true;
}

HttpReply HttpConnection::ReadReply(bool isHead) {
    size_t headEnd = 0;
    while ((headEnd = received.find("\r\n\r\n")) == std::string::npos) {
        if (!Receive()) return {};
    }
    const size_t lineEnd = received.find("\r\n");
    HttpReply reply;
    reply.status =
        static_cast<int>(std::strtol(received.c_str() + std::string_view("HTTP/1.1 ").size(), nullptr, 10));
    reply.headers = received.substr(lineEnd + 2, headEnd - lineEnd);
    const size_t length = isHead ? 0 : ContentLength(reply.headers);
    received.erase(0, headEnd + 4);
    while (received.size() < length) {
        if (!Receive()) return {};
    }
    reply.body = received.substr(0, length);
    received.erase(0, length);
    return reply;
}

bool HttpConnection::WaitUntilClosed() {
    while (Receive())
        continue;
    return received.empty();
}

HttpReply Exchange(int port, std::string_view request) {
    HttpConnection connection(port);
    connection.Send(request);
    return connection.ReadReply(request.starts_with("HEAD "));
}

std::string PostRequest(std::string_view target, std::string_view body) {
    return "POST " + std::string(target) +
           " HTTP/1.1\r\nHost: test\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\nConnection: close\r\n\r\n" + std::string(body);
}
