/* The service on the network: takes requests, hands their bodies to the handlers, sends what these reply. */
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "AccountStore.h"
#include "MapCatalogue.h"

namespace httplib {
class Server;
}

struct HttpServerOptions {
    std::string address = "127.0.0.1";  // a numeric IPv4 or IPv6 address of this machine
    int port = 0;                       // 0: one that is free
    std::string certificate;            // PEM files; both empty: plain HTTP, else HTTPS
    std::string privateKey;
};

/* Lets a server of the HTTP library answer as the service does, its limits included. What is given must
 * outlive it. */
void AddService(httplib::Server& server, const MapCatalogue& catalogue,
                const std::filesystem::path& mapFolder, AccountStore& accounts);

class HttpServer {
public:
    /* Takes the port. `catalogue` and `accounts` must outlive the server; the files of the maps are looked
     * for in `mapFolder`, which need not be there. Throws std::runtime_error, one sentence for whoever
     * started the service, when the port cannot be had or the certificate cannot be used. */
    HttpServer(const HttpServerOptions& options, const MapCatalogue& catalogue,
               const std::filesystem::path& mapFolder, AccountStore& accounts);
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;
    ~HttpServer();

    [[nodiscard]] int Port() const { return port; }

    /* Answers requests on threads of its own, until Stop or until the system takes the port away: true after
     * Stop. Calls `whenReady` once, on this thread, as soon as Stop may be called. */
    bool Serve(const std::function<void()>& whenReady);

    /* Ends Serve: takes no more connections, and lets those that there are finish. From any thread, once. */
    void Stop();

private:
    std::unique_ptr<httplib::Server> server;
    int port = 0;
};
