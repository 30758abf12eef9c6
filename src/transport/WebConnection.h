/* A connection to a web host through the session of all downloads. Everything blocks the calling thread. */
#pragma once

#include "text/WideString.h"

#include "LMOnline.h"
#include "transport/InternetHandle.h"

/* Whether the user has agreed to go on while the phone is roaming; false at load, and then asked once. */
extern bool roamingWarningAccepted;

class WebConnection {
public:
    enum State : int32_t {
        notConnected = 0,
        connected = 1,
        failed = 2, /* or refused by the user; nothing is tried again until Close */
    };

    /* For `host` on port 80, or with `secure` for HTTPS on port 443. With `useConnectionManager` a data
     * connection is asked for first; it stays up for the rest of the process. Throws std::bad_alloc. */
    WebConnection(const WCHAR* host, bool useConnectionManager, bool secure);
    WebConnection(const WebConnection&) = delete;
    WebConnection& operator=(const WebConnection&) = delete;

    /* Closes it. */
    ~WebConnection();

    /* Connects, if that has not been tried yet; whether there is a connection. While the phone is roaming,
     * and the user has not agreed to that before, `ownerWindow` (when there is one) asks first; a refusal is
     * a failure. */
    bool Connect();

    /* Connects, and sends a request without a body; whether that succeeded. The reply is then read from
     * `request`. It is fetched past all caches, and redirections are not followed. `secureRequest` is passed
     * on to the request. */
    bool OpenAndSend(const WCHAR* path, const WCHAR* verb, bool secureRequest);

    /* The HTTP status of the reply; 1000 when there is none. */
    [[nodiscard]] DWORD GetStatus() const;

    /* The Content-Length of the reply in bytes; -1 when it has none or it is no number. */
    [[nodiscard]] int64_t GetContentLength() const;

    /* Whether the caller wants to go on; asks `progressCallback`, if there is one. */
    [[nodiscard]] bool MayGoOn() const;

    /* Closes request and connection and forgets the host. The data connection stays up. */
    void Close();

    State state = notConnected;
    LMProgressCallback progressCallback = nullptr;
    void* callbackContext = nullptr;      /* passed to `progressCallback` */
    DownloadProgress* progress = nullptr; /* may be null */
    HWND ownerWindow = nullptr;           /* of the roaming question; null: never asked */
    bool secure;
    InternetHandle request; /* the one now open, null between requests */
    InternetHandle connection;
    bool holdsManagedConnection = false; /* Connect has asked for a data connection */
    WideString host;
    bool useConnectionManager;

private:
    [[nodiscard]] bool AcceptsRoaming() const;
};
