/* A connection to a web host through the session of all downloads. Everything blocks the calling thread. */
#pragma once

#include "text/WideString.h"

#include "LMOnline.h"
#include "base/LastError.h"
#include "transport/InternetHandle.h"

/* Whether the user has agreed to go on while the phone is roaming; false at load. Who has is not asked
 * again. */
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

    /* Calls Close. */
    ~WebConnection();

    /* Connects, if that has not been tried yet. Whether there is a connection. If a data connection is to be
     * asked for while the phone is roaming, a box owned by `ownerWindow` (none when that is null) first asks
     * a user who has not agreed to that before; a refusal is a failure. */
    bool Connect();

    /* Connects, and sends a request without a body. Whether that succeeded; the reply is then read from
     * `request`. No cache is used, and redirections are not followed. With `secureRequest` the request goes
     * by HTTPS. */
    bool OpenAndSend(const WCHAR* path, const WCHAR* verb, bool secureRequest);

    /* The HTTP status of the reply; 1000, and a last error, when there is none. */
    [[nodiscard]] DWORD GetStatus() const;

    /* The Content-Length of the reply in bytes, of which the number that it begins with counts; -1 when it
     * has none, more than 14 characters, or no number in front. */
    [[nodiscard]] int64_t GetContentLength() const;

    /* Whether to go on: what `progressCallback` answers, or true without one. */
    [[nodiscard]] bool MayGoOn() const;

    /* Closes request and connection and forgets the host. The data connection stays up. */
    void Close();

    State state = notConnected;
    LMProgressCallback progressCallback = nullptr;
    void* callbackContext = nullptr;      /* passed to `progressCallback` */
    DownloadProgress* progress = nullptr; /* may be null */
    HWND ownerWindow = nullptr;           /* owner of the roaming question; null: nobody is asked */
    bool secure;
    InternetHandle request; /* the one now open, null between requests */
    InternetHandle connection;
    bool holdsManagedConnection = false; /* Connect has asked for a data connection */
    WideString host;
    bool useConnectionManager;

    /* Why the last request did not bring all that was asked, as LMOnline.h tells it; none when it did. A user
     * who refuses to roam makes it ERROR_CANCELLED. */
    FirstFailure failure;

private:
    [[nodiscard]] bool AcceptsRoaming() const;
};
