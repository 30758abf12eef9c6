/* What anybody may send to the service's port. The input is all that comes over one connection. */
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <latch>
#include <set>
#include <thread>

#include "Database.h"
#include "FuzzInput.h"
#include "HttpServer.h"
#include "MadeUpMaps.h"
#include "service/TemporaryFolder.h"

namespace {

constexpr std::string_view outside = "nobody may read this";

class Connection {
public:
    explicit Connection(int port) : descriptor(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const timeval limit{10, 0};
        setsockopt(descriptor, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
        // Ports that wait for late packets would be used up within seconds.
        const linger atOnce{1, 0};
        setsockopt(descriptor, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
        Require(connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0,
                "the service takes every connection");
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { close(descriptor); }

    /* Sends the bytes and gives all that comes back. */
    std::string Ask(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t sent = send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent <= 0) break;  // the service may end it earlier
            bytes.remove_prefix(static_cast<size_t>(sent));
        }
        shutdown(descriptor, SHUT_WR);
        std::string reply;
        char block[4096];
        ssize_t count = 0;
        while ((count = recv(descriptor, block, sizeof block, 0)) > 0)
            reply.append(block, static_cast<size_t>(count));
        Require(count == 0 || errno == ECONNRESET, "the service ends what its client has ended");
        return reply;
    }

private:
    int descriptor;
};

class ServiceRequest final : public FuzzTarget {
public:
    ServiceRequest() {
        std::filesystem::create_directory(folder.Path() / "maps");
        std::ofstream(folder.Path() / "maps" / "a.map") << "the bytes of a map";
        std::ofstream(folder.Path() / "b.map") << outside;
        thread = std::thread([this] { server.Serve([this] { isReady.count_down(); }); });
        isReady.wait();
    }
    ServiceRequest(const ServiceRequest&) = delete;
    ServiceRequest& operator=(const ServiceRequest&) = delete;

    ~ServiceRequest() override {
        server.Stop();
        thread.join();
    }

    void Run(FuzzBytes bytes) override {
        const std::string request = FuzzInput(bytes).TakeRest();
        const std::string reply = Connection(server.Port()).Ask(request);
        if (!reply.empty()) RequireReply(reply);
        if (request.find("licapp") != std::string::npos) database.Execute("DELETE FROM account");
    }

private:
    static void RequireReply(const std::string& reply) {
        static const std::set<std::string> known{"100", "200", "206", "400", "404", "405",
                                                 "413", "414", "416", "417", "431"};
        Require(reply.starts_with("HTTP/1.1 "), "replies are those of HTTP");
        Require(known.contains(reply.substr(9, 3)), "no request makes the service fail");
        Require(reply.find(outside) == std::string::npos, "files outside of the folder of maps are not sent");
    }

    TemporaryFolder folder;
    MapCatalogue catalogue{folder.Path(), MadeUpMaps(2)};
    AccountStore accounts{folder.Path() / MapCatalogue::fileName};
    Database database{folder.Path() / MapCatalogue::fileName};
    HttpServer server{{}, catalogue, folder.Path() / "maps", accounts};
    std::latch isReady{1};
    std::thread thread;
};

const bool isAdded = AddFuzzTarget<ServiceRequest>("ServiceRequest");

}  // namespace
