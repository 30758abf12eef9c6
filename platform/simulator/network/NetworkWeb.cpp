#include "network/NetworkWeb.h"

// The network is used from one thread, and the headers are all of the library that is needed.
#define BOOST_ASIO_DISABLE_THREADS
#define BOOST_ERROR_CODE_HEADER_ONLY
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>
#include <memory>

#include "machine/Text.h"
#include "machine/Violations.h"

namespace {

namespace http = boost::beast::http;
using boost::asio::ip::tcp;
using boost::system::error_code;

using Message = http::request<http::string_body>;

std::u16string Widened(boost::beast::string_view text) {
    return {text.begin(), text.end()};
}

/* Adds the header lines, which end with a line feed, with or without a carriage return before it. A name may
 * come more than once. */
void AddHeaders(Message& message, const std::u16string& headers) {
    const std::string text = simulator::ToUtf8(headers);
    for (size_t begin = 0; begin < text.size();) {
        const size_t end = std::min(text.find('\n', begin), text.size());
        std::string line = text.substr(begin, end - begin);
        begin = end + 1;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const size_t colon = line.find(':');
        if (colon == std::string::npos) {
            if (!line.empty()) simulator::Violate("the header line '" + line + "' has no colon");
            continue;
        }
        const size_t value = line.find_first_not_of(' ', colon + 1);
        message.insert(line.substr(0, colon),
                       value != std::string::npos ? line.substr(value) : std::string());
    }
}

Message MessageOf(const WebRequest& request) {
    std::string target = simulator::ToUtf8(request.path);
    if (target.empty() || target[0] != '/') target.insert(0, "/");
    Message message;
    message.method_string(simulator::ToUtf8(request.verb));
    message.target(target);
    message.version(11);
    message.set(http::field::host, simulator::ToUtf8(request.host));
    message.set(http::field::user_agent, simulator::ToUtf8(request.agent));
    message.set(http::field::connection, "close");
    AddHeaders(message, request.headers);
    message.body() = request.body;
    message.prepare_payload();
    return message;
}

/* One request and its reply, whose body is read as it is asked for. */
class Exchange {
public:
    Exchange() { parser_.body_limit(UINT64_MAX); }

    bool Connect(uint16_t port) {
        error_code error;
        socket_.connect({boost::asio::ip::address_v4::loopback(), port}, error);
        return !error;
    }

    /* False when there is no reply. */
    bool Send(const WebRequest& request) {
        const Message message = MessageOf(request);
        error_code error;
        // A server may answer and close before it has read all of the request.
        http::write(socket_, message, error);
        http::read_header(socket_, buffer_, parser_, error);
        return !error;
    }

    const http::response<http::buffer_body>& Reply() const { return parser_.get(); }

    /* The next bytes of the body, as many as come at once; 0 at its end. */
    size_t Read(char* buffer, size_t most) {
        error_code error;
        size_t count = 0;
        while (count == 0 && !error && !parser_.is_done()) {
            auto& body = parser_.get().body();
            body.data = buffer;
            body.size = most;
            http::read_some(socket_, buffer_, parser_, error);
            if (error == http::error::need_buffer) error = {};
            count = most - body.size;
        }
        return count;
    }

private:
    boost::asio::io_context context_;
    tcp::socket socket_{context_};
    boost::beast::flat_buffer buffer_;
    http::response_parser<http::buffer_body> parser_;
};

WebReply ReplyOf(const std::shared_ptr<Exchange>& exchange) {
    WebReply reply = WebReply::WithStatus(exchange->Reply().result_int());
    for (const auto& field : exchange->Reply())
        reply.headers.emplace_back(Widened(field.name_string()), Widened(field.value()));
    reply.produce = [exchange](char* buffer, size_t most) { return exchange->Read(buffer, most); };
    return reply;
}

}  // namespace

WebHandler HostOnLoopback(uint16_t port) {
    return [port](const WebRequest& request) {
        const auto exchange = std::make_shared<Exchange>();
        if (!exchange->Connect(port)) return WebReply::Refused();
        return exchange->Send(request) ? ReplyOf(exchange) : WebReply::Nothing();
    };
}
