/* A connection to the service, byte by byte: what goes out is exactly what the test wrote. */
#pragma once

#include <string>
#include <string_view>

struct HttpReply {
    int status = 0;       // 0: no reply came
    std::string headers;  // as they came, each line with its end
    std::string body;
};

/* To 127.0.0.1. What does not work is a failure of the test. */
class HttpConnection {
public:
    explicit HttpConnection(int port);
    HttpConnection(const HttpConnection&) = delete;
    HttpConnection& operator=(const HttpConnection&) = delete;
    ~HttpConnection();

    void Send(std::string_view bytes);

    /* The next reply, read by its Content-Length; `isHead`: it has no body whatever its headers say. */
    HttpReply ReadReply(bool isHead = false);

    /* Waits until the service has ended the connection, in whatever way; whether nothing came before that. */
    bool WaitUntilClosed();

private:
    /* Takes in more bytes; false at the end of the connection. */
    bool Receive();

    int socket = -1;
    std::string received;
};

/* Sends a request on a connection of its own, and gives the reply. */
HttpReply Exchange(int port, std::string_view request);

/* A POST with a body to a path, or to a whole address. */
std::string PostRequest(std::string_view target, std::string_view body);
