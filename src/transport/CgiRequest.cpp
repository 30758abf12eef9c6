#include "transport/CgiRequest.h"

#include <algorithm>
#include <new>

#include "transport/BufferSizes.h"
#include "transport/NetworkConnection.h"

namespace {

constexpr size_t smallestReceiveBuffer = receiveBufferSize;

/* Shows the wait cursor for as long as it lives. */
class WaitCursor {
public:
    WaitCursor() noexcept : previous(SetCursor(LoadCursor(nullptr, IDC_WAIT))) {}
    ~WaitCursor() { SetCursor(previous); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    HCURSOR previous;
};

}  // namespace

CgiRequest::CgiRequest(const WCHAR* host, const WCHAR* path, bool useConnectionManager, bool secure) {
    if (useConnectionManager) {
        EstablishNetworkConnection();
        holdsManagedConnection = true;
    }
    session.Reset(InternetOpenW(TEXT("ZR_CgiClient-SP"), INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0));
    const INTERNET_PORT port = secure ? INTERNET_DEFAULT_HTTPS_PORT : INTERNET_DEFAULT_HTTP_PORT;
    connection.Reset(
        InternetConnectW(session.Get(), host, port, nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 0));
    const DWORD flags =
        INTERNET_FLAG_NO_COOKIES | INTERNET_FLAG_PRAGMA_NOCACHE | (secure ? INTERNET_FLAG_SECURE : 0);
    request.Reset(
        HttpOpenRequestW(connection.Get(), TEXT("POST"), path, nullptr, nullptr, nullptr, flags, 0));
    mode = writing;
}

CgiRequest::~CgiRequest() {
    request.Reset();
    connection.Reset();
    session.Reset();
    if (holdsManagedConnection) ReleaseNetworkConnection();
}

void CgiRequest::Write(const void* data, uint32_t size) {
    const size_t written = body.size();
    if (size > body.max_size() - written) throw std::bad_alloc();
    body.resize(written + size);
    std::copy_n(static_cast<const uint8_t*>(data), size, body.data() + written);
    readBuffer = body.data();
}

bool CgiRequest::SendRequest() {
    const WaitCursor waitCursor;
    const size_t size = body.size();
    // Before the request, so that memory cannot run out between it and its reply.
    if (size < smallestReceiveBuffer) body.resize(smallestReceiveBuffer);
    const BOOL sent = HttpSendRequestW(request.Get(), nullptr, 0, body.data(), static_cast<DWORD>(size));
    mode = reading;
    good = true;
    byteCount = 0;
    readBuffer = body.data();
    readPos = 0;
    readAvail = 0;
    return sent != FALSE;
}

bool CgiRequest::Read(void* data, uint32_t size) {
    auto* destination = static_cast<uint8_t*>(data);
    uint32_t wanted = size;
    while (wanted > 0) {
        if (readPos == readAvail && !FillBuffer()) break;
        const uint32_t some = std::min(readAvail - readPos, wanted);
        memcpy(destination, readBuffer + readPos, some);
        readPos += some;
        destination += some;
        wanted -= some;
    }
    return wanted < size;
}

bool CgiRequest::FillBuffer() {
    DWORD received = 0;
    // Whether the call succeeded does not matter: bytes that came before it failed belong to the reply.
    InternetReadFile(request.Get(), body.data(), static_cast<DWORD>(body.size()), &received);
    readPos = 0;
    readAvail = received;
    return received > 0;
}
