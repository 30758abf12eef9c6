#include "helpers/ScriptedServer.h"

#include <cstdlib>
#include <utility>

namespace {

constexpr std::string_view lineEnd = "\r\n";

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    }
    return lower;
}

/* Takes bytes from `socket` until there are `size`; false when they end before. */
bool ReceiveUpTo(SOCKET socket, std::string& bytes, size_t size) {
    while (bytes.size() < size) {
        const std::optional<std::string> some = ReceiveSome(socket);
        if (!some) return false;
        bytes += *some;
    }
    return true;
}

CapturedRequest ParseHead(std::string_view head) {
    CapturedRequest request;
    for (size_t end; (end = head.find(lineEnd)) != std::string_view::npos;
         head.remove_prefix(end + lineEnd.size())) {
        const std::string line(head.substr(0, end));
        if (request.line.empty()) {
            request.line = line;
        } else if (!line.empty()) {
            request.headers.push_back(line);
        }
    }
    return request;
}

std::optional<CapturedRequest> ReceiveRequest(SOCKET socket) {
    std::string bytes;
    size_t headEnd = std::string::npos;
    while ((headEnd = bytes.find("\r\n\r\n")) == std::string::npos) {
        if (!ReceiveUpTo(socket, bytes, bytes.size() + 1)) return std::nullopt;
    }
    headEnd += 4;
    CapturedRequest request = ParseHead(std::string_view(bytes).substr(0, headEnd));
    const size_t bodySize = std::strtoul(request.Header("Content-Length").c_str(), nullptr, 10);
    if (!ReceiveUpTo(socket, bytes, headEnd + bodySize)) return std::nullopt;
    request.body = bytes.substr(headEnd);
    return request;
}

}  // namespace

std::string CapturedRequest::Header(std::string_view name) const {
    std::string found = "none";
    for (const std::string& header : headers) {
        const size_t colon = header.find(':');
        if (Lower(header.substr(0, colon)) != Lower(name)) continue;
        if (found != "none") return "several";
        found = header.substr(header.find_first_not_of(' ', colon + 1));
    }
    return found;
}

std::string HttpReply(std::string_view body) {
    return "HTTP/1.1 200 OK\r\nContent-Type: application/octet-stream\r\nConnection: "
           "close\r\nContent-Length: " +
           std::to_string(body.size()) + "\r\n\r\n" + std::string(body);
}

ScriptedServer::ScriptedServer()
    : script{HttpReply("")}, listener([this](Socket connection) { Handle(std::move(connection)); }) {}

void ScriptedServer::Answer(ConnectionScript next) {
    const std::lock_guard lock(mutex);
    script = std::move(next);
}

std::vector<CapturedRequest> ScriptedServer::TakeRequests() {
    const std::lock_guard lock(mutex);
    return std::exchange(requests, {});
}

void ScriptedServer::Handle(Socket connection) {
    ConnectionScript now;
    {
        const std::lock_guard lock(mutex);
        now = script;
    }
    if (now.takesRequest) {
        std::optional<CapturedRequest> request = ReceiveRequest(connection.Get());
        if (!request) return;
        const std::lock_guard lock(mutex);
        requests.push_back(std::move(*request));
    }
    SendAll(connection.Get(), now.reply);
    now.beforeEnding();
    if (now.ending == ConnectionScript::Ending::Reset) ResetConnection(std::move(connection));
}
