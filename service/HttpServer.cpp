#include "HttpServer.h"

#include <httplib.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <regex>
#include <stdexcept>

#include "AccountHandler.h"
#include "CataloguePage.h"
#include "ForgotPage.h"
#include "Log.h"
#include "MapDownload.h"
#include "MapFolder.h"
#include "MapStoreHandler.h"
#include "SecretBytes.h"

namespace {

constexpr size_t largestBody = 1 << 20;
// Every connection that is kept open occupies one of these. Some clients keep each connection, and make
// another for their next request: a download in pieces has thousands.
constexpr size_t threadCount = 128;
constexpr time_t keptIdleSeconds = 1;
constexpr size_t mostRequestsPerConnection = 100;
// How long a client may take nothing of a download, for example while its user is being asked something.
constexpr time_t sendTimeoutSeconds = 60;

// A client that takes the service for a proxy sends a whole address: "POST http://host:80/path".
constexpr const char* pagePath = "https?://[^/]+/?|/";
constexpr const char* forgotPath = R"((?:https?://[^/]+)?/forgot\.htm)";
// A name that has no slash and does not begin with a dot cannot lead out of the folder.
constexpr const char* mapPath = R"((?:https?://[^/]+)?/maps/([A-Za-z0-9][A-Za-z0-9._-]*\.map))";
constexpr const char* anyPath = R"([\s\S]*)";

using BodyHandler = httplib::Server::HandlerWithContentReader;
using AddBodyHandler = httplib::Server& (httplib::Server::*)(const std::string&, BodyHandler);
constexpr std::array<AddBodyHandler, 4> bodyMethods = {&httplib::Server::Post, &httplib::Server::Put,
                                                       &httplib::Server::Patch, &httplib::Server::Delete};

/* Reads a request's body; it may hold a password. None, and the response's status is set, when it is too long
 * or does not arrive. A body that is too long is still read to its end: the next request of the connection
 * begins there. */
std::optional<SecretBytes> ReadBody(const httplib::Request& request, httplib::Response& response,
                                    const httplib::ContentReader& reader) {
    // Without either header there is no body, and the reader would wait for the end of the connection.
    if (!request.has_header("Content-Length") && !request.has_header("Transfer-Encoding"))
        return SecretBytes();
    SecretBytes body;
    bool isTooLong = false;
    const auto keep = [&](const char* data, size_t size) {
        isTooLong = isTooLong || size > largestBody - body.size();
        if (!isTooLong) body.insert(body.end(), data, data + size);
        return true;
    };
    // No handler takes forms: their fields are dropped.
    const bool arrived = request.is_multipart_form_data()
                             ? reader([](const httplib::MultipartFormData&) { return true; },
                                      [](const char*, size_t) { return true; })
                             : reader(keep);
    if (arrived && !isTooLong) return body;
    if (isTooLong) response.status = 413;
    if (response.status == -1) response.status = 400;
    return std::nullopt;
}

/* What a CGI program replies to a request's body. */
using CgiHandler = std::function<CgiReply(std::string_view)>;

/* Lets a CGI program answer; `name` is for the log. */
BodyHandler Cgi(const std::string& name, const CgiHandler& handle) {
    return [name, handle](const httplib::Request& request, httplib::Response& response,
                          const httplib::ContentReader& reader) {
        const std::optional<SecretBytes> body = ReadBody(request, response, reader);
        if (!body) return;
        const CgiReply reply = handle(std::string_view(body->data(), body->size()));
        if (!reply.refusal.empty()) LogLine(name + ": " + reply.refusal);
        response.status = 200;
        response.set_content(reply.body, "application/octet-stream");
    };
}

void Refuse(httplib::Response& response, int status, const char* allowed) {
    response.status = status;
    if (allowed != nullptr) response.set_header("Allow", allowed);
}

/* Refuses a request that has a body; `allowed` names the methods that the path takes, if there are any. */
BodyHandler Refusal(int status, const char* allowed) {
    return [status, allowed](const httplib::Request& request, httplib::Response& response,
                             const httplib::ContentReader& reader) {
        if (ReadBody(request, response, reader)) Refuse(response, status, allowed);
    };
}

/* Refuses requests with bodies. The first handler that matches a path answers, so those that take some come
 * before. */
void RefuseBodies(httplib::Server& server, const std::string& path, int status, const char* allowed) {
    for (const AddBodyHandler add : bodyMethods)
        (server.*add)(path, Refusal(status, allowed));
}

void AddPage(httplib::Server& server, const char* path, const httplib::Server::Handler& handle) {
    server.Get(path, handle);
    RefuseBodies(server, path, 405, "GET, HEAD");
}

/* Whether a GET of the path gets a map. */
bool HasFile(const std::filesystem::path& mapFolder, const std::string& path) {
    static const std::regex expected(mapPath);
    std::smatch match;
    if (!std::regex_match(path, match, expected)) return false;
    try {
        return MapReader::Open(mapFolder, match[1]) != nullptr;
    } catch (const std::system_error&) {
        return false;
    }
}

void AddPages(httplib::Server& server, const MapCatalogue& catalogue,
              const std::filesystem::path& mapFolder) {
    AddPage(server, pagePath, [&catalogue, mapFolder](const httplib::Request&, httplib::Response& response) {
        const auto hasFile = [&mapFolder](const std::string& path) { return HasFile(mapFolder, path); };
        response.status = 200;
        response.set_content(CataloguePage(catalogue.First(mostListedMaps), catalogue.Count(), hasFile),
                             "text/html; charset=utf-8");
    });
    AddPage(server, forgotPath, [](const httplib::Request&, httplib::Response& response) {
        response.set_content(ForgotPage(), "text/html; charset=utf-8");
    });
    AddPage(server, mapPath, [mapFolder](const httplib::Request& request, httplib::Response& response) {
        ReplyWithMap(mapFolder, request.matches[1], request, response);
    });
}

/* `name` is a word. */
void AddProgram(httplib::Server& server, const std::string& name, const CgiHandler& handle) {
    const std::string path = R"((?:https?://[^/]+)?/cgi-bin/)" + name + R"(\.cgi)";
    server.Post(path, Cgi(name + ".cgi", handle));
    server.Get(path,
               [](const httplib::Request&, httplib::Response& response) { Refuse(response, 405, "POST"); });
    RefuseBodies(server, path, 405, "POST");
}

void AddPrograms(httplib::Server& server, const MapCatalogue& catalogue, AccountStore& accounts) {
    AddProgram(server, "mapstore",
               [&catalogue](std::string_view body) { return HandleMapStore(catalogue, body); });
    AddProgram(server, "licapp",
               [&accounts](std::string_view body) { return HandleAccounts(accounts, body); });
}

/* Keeps the HTTP library from applying the Range header: it would cut a range out of error texts, too, and
 * would not let one that reaches beyond a file end with the file. Downloads of maps read the header
 * themselves; all other replies are whole. */
void DropRanges(const httplib::Request& request) {
    const_cast<httplib::Request&>(request).ranges.clear();
}

void AddErrorReplies(httplib::Server& server) {
    server.set_exception_handler(
        [](const httplib::Request&, httplib::Response& response, const std::exception_ptr& thrown) {
            try {
                std::rethrow_exception(thrown);
            } catch (const std::exception& error) {
                LogLine(std::string("request failed: ") + error.what());
            }
            response.status = 500;
        });
    server.set_error_handler([](const httplib::Request& request, httplib::Response& response) {
        DropRanges(request);
        response.set_content("Error " + std::to_string(response.status) + "\n", "text/plain");
    });
}

void LogRequests(httplib::Server& server) {
    server.set_logger([](const httplib::Request& request, const httplib::Response& response) {
        LogLine((request.method.empty() ? "-" : request.method) + ' ' +
                (request.path.empty() ? "-" : request.path) + ' ' + std::to_string(response.status) + ' ' +
                response.get_header_value("Content-Length"));
    });
}

void SetLimits(httplib::Server& server) {
    server.set_payload_max_length(largestBody);
    server.set_keep_alive_max_count(mostRequestsPerConnection);
    server.set_keep_alive_timeout(keptIdleSeconds);
    server.set_tcp_nodelay(true);
    server.set_write_timeout(sendTimeoutSeconds);
    // PRI is the one other method whose body the HTTP library would read, and without a limit.
    server.set_pre_routing_handler([](const httplib::Request& request, httplib::Response& response) {
        DropRanges(request);
        if (request.method != "PRI") return httplib::Server::HandlerResponse::Unhandled;
        response.status = 400;
        return httplib::Server::HandlerResponse::Handled;
    });
}

std::unique_ptr<httplib::Server> MadeServer(const HttpServerOptions& options) {
    if (options.certificate.empty()) return std::make_unique<httplib::Server>();
    auto server =
        std::make_unique<httplib::SSLServer>(options.certificate.c_str(), options.privateKey.c_str());
    if (!server->is_valid()) {
        throw std::runtime_error("the certificate '" + options.certificate +
                                 "' cannot be used with the private key '" + options.privateKey + "'");
    }
    return server;
}

bool IsNumericAddress(const std::string& address) {
    in6_addr parsed{};
    return inet_pton(AF_INET, address.c_str(), &parsed) == 1 ||
           inet_pton(AF_INET6, address.c_str(), &parsed) == 1;
}

int TakePort(httplib::Server& server, const HttpServerOptions& options) {
    if (!IsNumericAddress(options.address)) {
        throw std::runtime_error("'" + options.address + "' is not a numeric IP address");
    }
    // Two services must not share a port, but one may take the port of another that has just ended.
    server.set_socket_options([](int socket) {
        const int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
    if (options.port == 0) {
        const int port = server.bind_to_any_port(options.address);
        if (port > 0) return port;
    } else if (server.bind_to_port(options.address, options.port)) {
        return options.port;
    }
    throw std::runtime_error("port " + std::to_string(options.port) + " of " + options.address +
                             " cannot be had: " + std::strerror(errno));
}

}  // namespace

void AddService(httplib::Server& server, const MapCatalogue& catalogue,
                const std::filesystem::path& mapFolder, AccountStore& accounts) {
    SetLimits(server);
    AddPages(server, catalogue, mapFolder);
    AddPrograms(server, catalogue, accounts);
    RefuseBodies(server, anyPath, 404, nullptr);
    AddErrorReplies(server);
    LogRequests(server);
}

HttpServer::HttpServer(const HttpServerOptions& options, const MapCatalogue& catalogue,
                       const std::filesystem::path& mapFolder, AccountStore& accounts)
    : server(MadeServer(options)), port(TakePort(*server, options)) {
    AddService(*server, catalogue, mapFolder, accounts);
}

HttpServer::~HttpServer() = default;

bool HttpServer::Serve(const std::function<void()>& whenReady) {
    // The HTTP library asks for the queue once, when a call of stop already has its effect.
    server->new_task_queue = [&whenReady] {
        whenReady();
        return new httplib::ThreadPool(threadCount);
    };
    return server->listen_after_bind();
}

void HttpServer::Stop() {
    server->stop();
}
