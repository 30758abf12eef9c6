#include "network/Web.h"

#include <algorithm>
#include <cstring>
#include <map>

#include "machine/Text.h"
#include "machine/Violations.h"

namespace simulator {

namespace {

struct Web {
    std::map<std::u16string, std::map<INTERNET_PORT, WebHandler>> hosts;  // by folded name
    std::vector<WebRequest> requests;
};

Web& Current() {
    static Web& web = *new Web;
    return web;
}

WebReply FailedSend(DWORD error) {
    WebReply reply;
    reply.sendError = error;
    return reply;
}

void RequireSound(const WebReply& reply) {
    if (std::find(reply.chunks.begin(), reply.chunks.end(), size_t{0}) != reply.chunks.end()) {
        Violate("a scripted reply has a chunk of 0 bytes, which would end it");
    }
    const bool breaks = reply.breaks != WebReply::Break::None;
    if (breaks && reply.produce == nullptr && reply.breakAt > reply.body.size()) {
        Violate("a scripted reply breaks behind the end of its body");
    }
}

}  // namespace

WebReply Ask(const WebRequest& request) {
    Web& web = Current();
    const auto host = web.hosts.find(Folded(request.host));
    if (host == web.hosts.end()) return FailedSend(ERROR_INTERNET_NAME_NOT_RESOLVED);
    const auto port = host->second.find(request.port);
    if (port == host->second.end()) return WebReply::Refused();
    web.requests.push_back(request);
    const WebHandler handler = port->second;  // it may replace itself while it runs
    WebReply reply = handler(request);
    RequireSound(reply);
    return reply;
}

void ResetWeb() {
    Current() = Web{};
}

void ForgetRequests() {
    Current().requests.clear();
}

ReplyReader::ReplyReader(WebReply reply) : reply_(std::move(reply)) {
    const bool knowsLength = reply_.status != 0 && reply_.produce == nullptr;
    if (!reply_.sendsContentLength || !knowsLength || Header(u"Content-Length")) return;
    const std::string length = std::to_string(reply_.body.size());
    reply_.headers.emplace_back(u"Content-Length", std::u16string(length.begin(), length.end()));
}

ReplyReader::Portion ReplyReader::Read(char* buffer, size_t wanted) {
    if (isReset_ || wanted == 0) return {};
    size_t most = std::min(wanted, NextChunk());
    bool meetsBreak = false;
    if (reply_.breaks != WebReply::Break::None) {
        meetsBreak = most > reply_.breakAt - position_;
        if (meetsBreak) most = static_cast<size_t>(reply_.breakAt - position_);
    }
    const size_t taken = most != 0 ? Take(buffer, most) : 0;
    position_ += taken;
    const bool reachesBreak = meetsBreak && taken == most;
    if (!reachesBreak || reply_.breaks != WebReply::Break::Reset) return {taken, 0};
    isReset_ = true;
    return {taken, reply_.resetError};
}

size_t ReplyReader::NextChunk() {
    if (reply_.chunks.empty()) return SIZE_MAX;
    const size_t index = std::min(reads_++, reply_.chunks.size() - 1);
    return reply_.chunks[index];
}

size_t ReplyReader::Take(char* buffer, size_t most) {
    if (reply_.produce == nullptr) {
        const auto begin = static_cast<size_t>(position_);
        const size_t taken = std::min(most, reply_.body.size() - begin);
        if (taken != 0) std::memcpy(buffer, reply_.body.data() + begin, taken);
        return taken;
    }
    if (isProduced_) return 0;
    const size_t taken = reply_.produce(buffer, most);
    if (taken > most) Violate("a reply's producer gave more bytes than it was asked for");
    isProduced_ = taken == 0;
    return std::min(taken, most);
}

std::optional<std::u16string> ReplyReader::Header(std::u16string_view name, size_t n) const {
    if (reply_.status == 0) return std::nullopt;
    const std::u16string folded = Folded(name);
    for (const auto& [headerName, value] : reply_.headers) {
        if (Folded(headerName) == folded && n-- == 0) return value;
    }
    return std::nullopt;
}

}  // namespace simulator

WebReply WebReply::WithBody(std::string bytes) {
    WebReply reply;
    reply.body = std::move(bytes);
    return reply;
}

WebReply WebReply::WithStatus(DWORD status) {
    WebReply reply;
    reply.status = status;
    return reply;
}

WebReply WebReply::Refused() {
    return simulator::FailedSend(ERROR_INTERNET_CANNOT_CONNECT);
}

WebReply WebReply::TimedOut() {
    return simulator::FailedSend(ERROR_INTERNET_TIMEOUT);
}

WebReply WebReply::Nothing() {
    return WithStatus(0);
}

void DeviceNetwork::AddHost(std::u16string_view name, INTERNET_PORT port, WebHandler handler) {
    simulator::Current().hosts[simulator::Folded(name)][port] = std::move(handler);
}

void DeviceNetwork::AddHost(std::u16string_view name, INTERNET_PORT port, WebReply reply) {
    AddHost(name, port, [reply = std::move(reply)](const WebRequest&) { return reply; });
}

const std::vector<WebRequest>& DeviceNetwork::Requests() const {
    return simulator::Current().requests;
}
