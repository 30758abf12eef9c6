#include "helpers/LocalTcp.h"

#include <stdexcept>

namespace {

void Require(bool done, const char* what) {
    if (done) return;
    throw std::runtime_error(std::string(what) + ": socket error " + std::to_string(WSAGetLastError()));
}

sockaddr_in LocalAddress(uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

Socket NewSocket() {
    Socket socket(::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    Require(static_cast<bool>(socket), "socket");
    return socket;
}

/* For as long as it lives, calls on the socket do not wait. */
class NonBlocking {
public:
    explicit NonBlocking(SOCKET lent) : socket(lent) { Set(1); }
    NonBlocking(const NonBlocking&) = delete;
    NonBlocking& operator=(const NonBlocking&) = delete;
    ~NonBlocking() { Set(0); }

private:
    void Set(u_long on) const { ioctlsocket(socket, static_cast<long>(FIONBIO), &on); }

    SOCKET socket;
};

/* Until something can be sent, or for a moment. */
void AwaitRoom(SOCKET socket) {
    fd_set writable;
    FD_ZERO(&writable);
    FD_SET(socket, &writable);
    timeval moment{0, 20'000};
    select(0, nullptr, &writable, nullptr, &moment);
}

}  // namespace

SocketLibrary::SocketLibrary() {
    WSADATA data;
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0) throw std::runtime_error("WSAStartup");
}

SocketLibrary::~SocketLibrary() {
    WSACleanup();
}

Socket BoundSocket() {
    Socket socket = NewSocket();
    const sockaddr_in address = LocalAddress(0);
    Require(bind(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0, "bind");
    return socket;
}

uint16_t PortOf(SOCKET socket) {
    sockaddr_in address{};
    int size = sizeof address;
    Require(getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) == 0, "getsockname");
    return ntohs(address.sin_port);
}

Socket ConnectedSocket(uint16_t port) {
    Socket socket = NewSocket();
    const sockaddr_in address = LocalAddress(port);
    Require(connect(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0,
            "connect");
    return socket;
}

// A send that waits for room may wait for ever under Wine 8.0, when the other side resets the connection just
// as the wait begins. So none waits: each fails at once for want of room, and the next tells whether there is
// still somebody.
bool SendAll(SOCKET socket, std::string_view bytes) {
    const NonBlocking now(socket);
    while (!bytes.empty()) {
        const int sent = send(socket, bytes.data(), static_cast<int>(bytes.size()), 0);
        if (sent > 0) {
            bytes.remove_prefix(static_cast<size_t>(sent));
        } else if (sent == 0 || WSAGetLastError() != WSAEWOULDBLOCK) {
            return false;
        } else {
            AwaitRoom(socket);
        }
    }
    return true;
}

std::optional<std::string> ReceiveSome(SOCKET socket) {
    std::string bytes(65536, '\0');
    const int received = recv(socket, bytes.data(), static_cast<int>(bytes.size()), 0);
    if (received <= 0) return std::nullopt;
    bytes.resize(static_cast<size_t>(received));
    return bytes;
}

void ResetConnection(Socket socket) {
    const linger now{1, 0};
    setsockopt(socket.Get(), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&now), sizeof now);
}
