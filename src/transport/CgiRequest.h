/* One POST of a binary body to a CGI program, and its binary reply: written as a ByteStream, sent, and read
 * back as one. Everything blocks the calling thread. */
#pragma once

#include "transport/ByteStream.h"

#include <vector>

#include "base/LastError.h"
#include "transport/InternetHandle.h"

class CgiRequest final : public ByteStream {
public:
    /* Opens the request to `path` (without a leading slash) on `host`, port 80, or with `secure` HTTPS on
     * port 443. With `useConnectionManager` a data connection is asked for first, each time, and given up
     * with this object; the request goes ahead whether or not there is one. A failure here shows only when
     * the request is sent. */
    CgiRequest(const WCHAR* host, const WCHAR* path, bool useConnectionManager, bool secure);
    CgiRequest(const CgiRequest&) = delete;
    CgiRequest& operator=(const CgiRequest&) = delete;
    ~CgiRequest();

    /* Adds to the body. Throws std::bad_alloc. */
    void Write(const void* data, uint32_t size) override;

    /* Posts the body, which must not be empty, under a wait cursor, and turns the stream to reading with
     * `good` set and `byteCount` 0. True when the system reports the request as sent: the HTTP status is not
     * looked at, and there may be no reply at all. Throws std::bad_alloc. */
    bool SendRequest();

    /* Reads `size` bytes of the reply. Each read from the network asks for `receiveBufferSize` bytes, or for
     * as many as the request's body had if these were more. True when there were any, however few (the rest
     * of `data` stays as it was); false when there were none, and for a size of 0. */
    bool Read(void* data, uint32_t size) override;

    /* Why the service has not done what it was asked, as LMOnline.h tells it; 0 when it has. `status` is what
     * it has answered, of which 0 is success; a status that did not come, or only in part, does not count.
     * The HTTP status is asked for unless all has gone well or nothing was sent: a reply that is a refusal
     * may look like anything. */
    [[nodiscard]] DWORD GetCause(int32_t status) const;

    /* Ends the exchange with what has failed outside of this object, and returns the first cause of all. */
    DWORD NoteFailure(DWORD cause);

private:
    bool FillBuffer();

    InternetHandle session;
    InternetHandle request;
    InternetHandle connection;
    bool holdsManagedConnection = false;
    std::vector<uint8_t> body; /* the request's body, then the receive buffer */
    bool isSent = false;
    FirstFailure readFailure; /* of a read from the network; it may have brought bytes all the same */
    FirstFailure failure;     /* why it was not sent, or why a read of the reply did not find all its bytes */
};
