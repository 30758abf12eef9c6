/* A web server of a test's own. It keeps what it is asked byte by byte, and answers with what it is told. */
#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "helpers/LocalListener.h"

/* One request as it came over the wire. */
struct CapturedRequest {
    std::string line;                  // the request line, without its end
    std::vector<std::string> headers;  // the header lines, without their ends
    std::string body;

    /* The value of the only header of that name, whatever its case; "none" or "several" when there is not
     * exactly one. */
    [[nodiscard]] std::string Header(std::string_view name) const;
};

/* What is done with a connection. */
struct ConnectionScript {
    enum class Ending { Close, Reset };

    std::string reply;
    Ending ending = Ending::Close;
    bool takesRequest = true;                    // false: the connection ends before anything is read
    std::function<void()> beforeEnding = [] {};  // runs on the server's thread, after the reply
};

/* `body` under a good status and with its length. */
std::string HttpReply(std::string_view body);

class ScriptedServer {
public:
    /* At first it answers with HttpReply(""). */
    ScriptedServer();

    [[nodiscard]] uint16_t Port() const { return listener.Port(); }

    /* What is done with every connection from here on. */
    void Answer(ConnectionScript next);
    void Answer(std::string_view body) { Answer(ConnectionScript{HttpReply(body)}); }

    /* The requests since the last call, in their order. */
    std::vector<CapturedRequest> TakeRequests();

private:
    void Handle(Socket connection);

    std::mutex mutex;  // guards the two below
    ConnectionScript script;
    std::vector<CapturedRequest> requests;
    LocalListener listener;  // the last: its thread uses the others
};
