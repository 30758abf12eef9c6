/* What anybody may send to the service's port. The input is all that comes over one connection; it comes from
 * memory, because a connection of the network would cost more than all that is made of its bytes. */
#include <httplib.h>

#include <fstream>
#include <set>

#include "Database.h"
#include "FuzzInput.h"
#include "HttpServer.h"
#include "MadeUpMaps.h"
#include "service/TemporaryFolder.h"

namespace {

constexpr std::string_view outside = "nobody may read this";
constexpr int mostRequests = 100;  // of one connection, as the service allows

/* A connection whose client has sent all that it ever sends. */
class Connection final : public httplib::Stream {
public:
    explicit Connection(std::string_view sent) : unread(sent) {}

    [[nodiscard]] bool is_readable() const override { return true; }
    [[nodiscard]] bool is_writable() const override { return true; }

    ssize_t read(char* buffer, size_t size) override {
        const size_t taken = unread.copy(buffer, size);
        unread.remove_prefix(taken);
        return static_cast<ssize_t>(taken);
    }

    ssize_t write(const char* bytes, size_t size) override {
        reply.append(bytes, size);
        return static_cast<ssize_t>(size);
    }

    void get_remote_ip_and_port(std::string& address, int& port) const override {
        address = "127.0.0.1";
        port = 50000;
    }
    void get_local_ip_and_port(std::string& address, int& port) const override {
        address = "127.0.0.1";
        port = 80;
    }
    [[nodiscard]] socket_t socket() const override { return INVALID_SOCKET; }

    std::string reply;

private:
    std::string_view unread;
};

class Service : public httplib::Server {
public:
    Service() { Require(bind_to_any_port("127.0.0.1") > 0, "there is a port"); }

    /* Answers all requests of a connection, as the HTTP library does for one of the network. */
    void Answer(Connection& connection) {
        for (int left = mostRequests; left > 0; --left) {
            bool isClosed = false;
            if (!process_request(connection, left == 1, isClosed, {}) || isClosed) return;
        }
    }
};

class ServiceRequest final : public FuzzTarget {
public:
    ServiceRequest() {
        std::filesystem::create_directory(folder.Path() / "maps");
        std::ofstream(folder.Path() / "maps" / "a.map") << "the bytes of a map";
        std::ofstream(folder.Path() / "b.map") << outside;
        AddService(server, catalogue, folder.Path() / "maps", accounts);
    }

    void Run(FuzzBytes bytes) override {
        const std::string request = FuzzInput(bytes).TakeRest();
        Connection connection(request);
        server.Answer(connection);
        if (!connection.reply.empty()) RequireReply(connection.reply);
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
    Service server;
};

const bool isAdded = AddFuzzTarget<ServiceRequest>("ServiceRequest");

}  // namespace
