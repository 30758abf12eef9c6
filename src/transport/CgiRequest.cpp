#include "transport/CgiRequest.h"

#include <algorithm>
#include <new>

#include "LMOnline.h"
#include "base/Trace.h"
#include "transport/BufferSizes.h"
#include "transport/HttpStatus.h"
#include "transport/NetworkConnection.h"

namespace {

constexpr size_t smallestReceiveBuffer = receiveBufferSize;

/* Of a body: what a vector holds where addresses have 32 bits. */
constexpr size_t mostBytes = INT32_MAX;

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
    if constexpr (isTraced) TraceCall(TEXT("session"), nullptr, session ? 1 : 0, bool{session});
    if (!session) failure.NoteFailedCall();
    const INTERNET_PORT port = secure ? INTERNET_DEFAULT_HTTPS_PORT : INTERNET_DEFAULT_HTTP_PORT;
    connection.Reset(
        InternetConnectW(session.Get(), host, port, nullptr, nullptr, INTERNET_SERVICE_HTTP, 0, 0));
    if constexpr (isTraced) TraceCall(TEXT("connect"), host, port, bool{connection});
    if (!connection) failure.NoteFailedCall();
    const DWORD flags =
        INTERNET_FLAG_NO_COOKIES | INTERNET_FLAG_PRAGMA_NOCACHE | (secure ? INTERNET_FLAG_SECURE : 0);
    request.Reset(
        HttpOpenRequestW(connection.Get(), TEXT("POST"), path, nullptr, nullptr, nullptr, flags, 0));
    if constexpr (isTraced) TraceCall(TEXT("POST"), path, request ? 1 : 0, bool{request});
    if (!request) failure.NoteFailedCall();
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
    if (size > mostBytes - written) throw std::bad_alloc();
    body.resize(written + size);
    std::copy_n(static_cast<const uint8_t*>(data), size, body.data() + written);
    readBuffer = body.data();
}

bool CgiRequest::SendRequest() {
    const WaitCursor waitCursor;
    const size_t size = body.size();
    // Before the request, so that memory cannot run out between it and its reply.
    if (size < smallestReceiveBuffer) body.resize(smallestReceiveBuffer);
    isSent = HttpSendRequestW(request.Get(), nullptr, 0, body.data(), static_cast<DWORD>(size)) != FALSE;
    if constexpr (isTraced) TraceCall(TEXT("send"), nullptr, static_cast<int64_t>(size), isSent);
    if (!isSent) failure.NoteFailedCall();
    mode = reading;
    good = true;
    byteCount = 0;
    readBuffer = body.data();
    readPos = 0;
    readAvail = 0;
    return isSent;
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
    // Bytes that came before the call failed belong to the reply.
    const bool isRead =
        InternetReadFile(request.Get(), body.data(), static_cast<DWORD>(body.size()), &received) != FALSE;
    if constexpr (isTraced) TraceCall(TEXT("read"), nullptr, received, isRead);
    if (!isRead) readFailure.NoteFailedCall();
    readPos = 0;
    readAvail = received;
    if (received > 0) return true;
    readFailure.Note(LM_ERROR_REPLY_ENDED);
    return failure.Note(readFailure.cause);
}

DWORD CgiRequest::NoteFailure(DWORD cause) {
    failure.Note(cause);
    return failure.cause;
}

DWORD CgiRequest::GetCause(int32_t status) const {
    if (!isSent || (failure.cause == ERROR_SUCCESS && status == 0)) return failure.cause;
    const DWORD refusal = GetRefusal(request.Get());
    if (LM_ERROR_KIND(refusal) == LM_ERROR_HTTP_STATUS) return refusal;
    if (failure.cause != ERROR_SUCCESS) return failure.cause;
    return LM_ERROR_SERVICE_STATUS | LM_ERROR_STATUS(static_cast<DWORD>(status));
}
