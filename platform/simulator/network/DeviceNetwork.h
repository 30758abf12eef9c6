/* The network's part of the device: scripted hosts, and the Connection Manager. */
#pragma once

#include "Platform.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/* A request as it reached a host. Texts are exactly those that the library gave. */
struct WebRequest {
    std::u16string agent;    // of InternetOpenW
    DWORD accessType = 0;    // of InternetOpenW
    std::u16string host;     // of InternetConnectW
    INTERNET_PORT port = 0;  // of InternetConnectW
    std::u16string verb;     // of HttpOpenRequestW; "GET" for null
    std::u16string path;     // of HttpOpenRequestW, without a slash put before it; empty for null
    DWORD flags = 0;         // of HttpOpenRequestW
    bool secure = false;     // whether INTERNET_FLAG_SECURE is among them
    std::u16string headers;  // of HttpSendRequestW, as many units as were given; empty for null
    std::string body;        // of HttpSendRequestW
};

/* What a host answers. As it stands: status 200, an empty body, a Content-Length that is right. */
struct WebReply {
    /* Fills `buffer` with at most `most` bytes of the body (at least 1 is asked for); 0 ends it. */
    using Producer = std::function<size_t(char* buffer, size_t most)>;

    enum class Break {
        None,
        Close,  // the reply ends there as if it were complete
        Reset,  // a read that wants more than that fails with resetError and gives what is left before the
                // break; reads after it succeed with 0 bytes
    };

    DWORD status = 200;                                              // 0: the host closed without an answer
    std::vector<std::pair<std::u16string, std::u16string>> headers;  // names and values
    bool sendsContentLength = true;  // adds the body's true length unless `headers` has a Content-Length; a
                                     // produced body has none of its own
    std::string body;
    Producer produce;            // when set, makes the body instead, for bodies too large to hold
    std::vector<size_t> chunks;  // the most bytes that the first, second, ... read gives; the last one holds
                                 // for all further reads; none: as many as are asked for
    Break breaks = Break::None;
    uint64_t breakAt = 0;      // bytes of the body before the break
    DWORD resetError = 10054;  // WSAECONNRESET; ERROR_INTERNET_CONNECTION_ABORTED (12030) is seen too
    DWORD sendError = 0;       // not 0: HttpSendRequestW fails with this error, the rest does not count

    static WebReply WithBody(std::string bytes);
    static WebReply WithStatus(DWORD status);
    static WebReply Refused();   // the send fails with ERROR_INTERNET_CANNOT_CONNECT (12029)
    static WebReply TimedOut();  // the send fails with ERROR_INTERNET_TIMEOUT (12002)
    static WebReply Nothing();   // the send succeeds, the status is 0 and there is no body
};

/* Called once for every request that is sent to the host. */
using WebHandler = std::function<WebReply(const WebRequest&)>;

/* What the Connection Manager answers, to every call alike. */
struct ConnectionAnswers {
    HRESULT mapResult = S_OK;  // of ConnMgrMapURL; a failure leaves the network untouched
    HRESULT establishResult =
        S_OK;  // of ConnMgrEstablishConnectionSync; a failure gives no handle, no status
    DWORD status = CONNMGR_STATUS_CONNECTED;
    HRESULT releaseResult = S_OK;  // of ConnMgrReleaseConnection
};

class DeviceNetwork {
public:
    /* A host that answers on one port; replaces what answered there. A name that was never given is an
     * unknown host (12007), another port of a known host refuses (12029). Names are compared without case. */
    void AddHost(std::u16string_view name, INTERNET_PORT port, WebHandler handler);
    void AddHost(std::u16string_view name, INTERNET_PORT port, WebReply reply);

    /* The requests that reached a host, in order. */
    const std::vector<WebRequest>& Requests() const;

    void SetConnectionAnswers(const ConnectionAnswers& answers);

protected:
    void Reset();
};
