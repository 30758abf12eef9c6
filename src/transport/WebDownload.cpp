#include "transport/WebDownload.h"

#include <algorithm>
#include <utility>

#include "LMOnline.h"
#include "base/Contained.h"
#include "base/LastError.h"
#include "base/OwnedSystemFile.h"
#include "base/Trace.h"
#include "text/FormatString.h"
#include "transport/BufferSizes.h"
#include "transport/HttpStatus.h"

namespace {

constexpr DWORD chunkSize = downloadChunkSize;

void RemoveFile(const WideString& path) {
    [[maybe_unused]] const BOOL isRemoved = DeleteFileW(path.c_str());
    if constexpr (isTraced) TraceCall(TEXT("delete"), path.c_str(), isRemoved, isRemoved != FALSE);
}

/* The file in which a download grows. It is deleted at the end, unless it has been moved into place. */
class TemporaryFile {
public:
    explicit TemporaryFile(WideString filePath)
        : path(std::move(filePath)),
          file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                           nullptr)),
          isMine(static_cast<bool>(file)) {
        if constexpr (isTraced) TraceCall(TEXT("create"), path.c_str(), isMine ? 1 : 0, isMine);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        Close();
        if (isMine) RemoveFile(path);
    }

    [[nodiscard]] HANDLE Get() const { return file.Get(); }
    [[nodiscard]] bool IsThere() const { return isMine; }
    void Close() { file.Reset(); }

    /* Whether it was moved. A move that fails leaves the file where it is. */
    bool MoveTo(const WideString& target) {
        isMine = false;
        const bool isMoved = MoveFileW(path.c_str(), target.c_str()) != FALSE;
        if constexpr (isTraced) TraceCall(TEXT("move to"), target.c_str(), isMoved ? 1 : 0, isMoved);
        return isMoved;
    }

private:
    WideString path;
    SystemFile file;
    bool isMine;
};

/* Those below are false when they fail, and note why. */

bool IsAccepted(WebConnection& connection) {
    connection.failure.Note(GetRefusal(connection.request.Get()));
    return connection.failure.cause == ERROR_SUCCESS;
}

bool ReadReply(WebConnection& connection, BYTE* place, DWORD size, DWORD& received) {
    const bool isRead = InternetReadFile(connection.request.Get(), place, size, &received) != FALSE;
    if constexpr (isTraced) TraceCall(TEXT("read"), nullptr, received, isRead);
    if (!isRead) connection.failure.NoteFailedCall();
    return isRead;
}

/* Adds what has been written to `total`, too: the caller's record may say anything by the end. */
bool ReceiveInto(HANDLE file, WebConnection& connection, int64_t& total) {
    BYTE chunk[chunkSize];
    for (;;) {
        DWORD received = 0;
        if (!ReadReply(connection, chunk, chunkSize, received)) return false;
        if (!connection.MayGoOn()) return connection.failure.Note(LM_ERROR_CANCELLED);
        if (received == 0) return true;
        DWORD written = 0;
        const bool isWritten = WriteFile(file, chunk, received, &written, nullptr) != FALSE;
        if constexpr (isTraced) TraceCall(TEXT("write"), nullptr, written, isWritten);
        if (!isWritten) return connection.failure.NoteFailedCall();
        if (written < received) return connection.failure.Note(ERROR_DISK_FULL);
        total += written;
        if (connection.progress != nullptr) connection.progress->bytesReceived += written;
    }
}

bool OpenAndSendRange(WebConnection& connection, const WCHAR* urlPath, int64_t offset, int32_t length) {
    const DWORD flags = INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_NO_AUTO_REDIRECT |
                        INTERNET_FLAG_NO_COOKIES | INTERNET_FLAG_PRAGMA_NOCACHE |
                        (connection.secure ? INTERNET_FLAG_SECURE : 0);
    // In unsigned arithmetic, which wraps: signed numbers could overflow for an offset near the end of 64
    // bits.
    const auto last = static_cast<int64_t>(static_cast<uint64_t>(offset) +
                                           static_cast<uint64_t>(static_cast<int64_t>(length)) - 1);
    // Before the request, so that memory cannot run out once it has failed.
    const WideString header = FormatString(TEXT("Range:bytes=%I64d-%I64d\n"), offset, last);
    connection.request.Reset(
        HttpOpenRequestW(connection.connection.Get(), nullptr, urlPath, nullptr, nullptr, nullptr, flags, 0));
    if constexpr (isTraced)
        TraceCall(TEXT("GET"), urlPath, connection.request ? 1 : 0, bool{connection.request});
    if (!connection.request) connection.failure.NoteFailedCall();
    const bool isSent = HttpSendRequestW(connection.request.Get(), header.c_str(),
                                         static_cast<DWORD>(header.size()), nullptr, 0) != FALSE;
    if constexpr (isTraced) TraceCall(TEXT("send"), header.c_str(), 0, isSent);
    if (!isSent) connection.failure.NoteFailedCall();
    return isSent;
}

bool ReceiveInto(BYTE* buffer, DWORD length, WebConnection& connection) {
    while (length > 0) {
        DWORD received = 0;
        const DWORD wanted = std::min(length, chunkSize);
        if (!ReadReply(connection, buffer, wanted, received)) return false;
        if (received == 0) return connection.failure.Note(LM_ERROR_REPLY_ENDED);
        if (!connection.MayGoOn()) return connection.failure.Note(LM_ERROR_CANCELLED);
        buffer += received;
        length -= received;
    }
    return true;
}

}  // namespace

bool DownloadWebFile(WebConnection& connection, const WCHAR* urlPath, const WideString& localFile) {
    connection.request.Reset();
    if (!connection.OpenAndSend(urlPath, TEXT("GET"), connection.secure)) return false;
    if (!IsAccepted(connection)) return false;

    WideString temporaryPath = localFile + TEXT(".TMP");
    // The old file goes first: the device may not have room for both.
    RemoveFile(localFile);
    TemporaryFile file(std::move(temporaryPath));
    if (!file.IsThere()) {
        connection.failure.NoteFailedCall();
        connection.request.Reset();
        return false;
    }
    DownloadProgress* const progress = connection.progress;
    const int64_t announced = progress != nullptr ? connection.GetContentLength() : -1;
    if (progress != nullptr) *progress = {0, announced};

    int64_t received = 0;
    const bool complete = ReceiveInto(file.Get(), connection, received);
    file.Close();
    connection.request.Reset();
    if (!complete) return false;
    if (!file.MoveTo(localFile)) connection.failure.NoteFailedCall();
    if (received < announced) connection.failure.Note(LM_ERROR_REPLY_ENDED);
    return true;
}

int32_t ReadWebFileRange(WebConnection& connection, const WCHAR* urlPath, int64_t offset, int32_t length,
                         void* buffer) {
    connection.request.Reset();
    if (!connection.Connect()) return -1;
    if (!OpenAndSendRange(connection, urlPath, offset, length)) return -1;
    if (!IsAccepted(connection)) return -1;

    if (length < 0) connection.failure.Note(LM_ERROR_BAD_ARGUMENT);
    const bool complete =
        length > 0 && ReceiveInto(static_cast<BYTE*>(buffer), static_cast<DWORD>(length), connection);
    connection.request.Reset();
    return complete ? length : 0;
}

/* What LMOnline.h declares: arguments are checked, exceptions are stopped, and the cause of a failure is left
 * at the end, when nothing can change it any more. */

namespace {

/* What `transfer` gives for a connection to `host`; `failed` when memory runs out. */
template <class Operation>
int32_t Transfer(const LMChar* host, LMProgressCallback callback, void* context, int32_t failed,
                 Operation transfer) {
    DWORD cause = ERROR_NOT_ENOUGH_MEMORY;
    const int32_t result = Contained(failed, [&] {
        WebConnection connection(host, true, false);
        connection.progressCallback = callback;
        connection.callbackContext = context;
        const int32_t given = transfer(connection);
        cause = connection.failure.cause;
        return given;
    });
    if constexpr (isTraced) Trace(TEXT("transfer"), host, result, cause);
    return LeaveError(cause, result);
}

}  // namespace

int32_t LM_CALL LMDownloadWebFileProgress(const LMChar* host, const LMChar* urlPath, const LMChar* localFile,
                                          LMProgressCallback callback, void* context,
                                          DownloadProgress* progress) {
    if (host == nullptr || urlPath == nullptr || localFile == nullptr)
        return LeaveError(LM_ERROR_BAD_ARGUMENT, 0);
    return Transfer(host, callback, context, 0, [&](WebConnection& connection) {
        connection.progress = progress;
        return DownloadWebFile(connection, urlPath, localFile) ? 1 : 0;
    });
}

int32_t LM_CALL x77fc64c7(const LMChar* host, const LMChar* urlPath, const LMChar* localFile,
                          LMProgressCallback callback, void* context) {
    return LMDownloadWebFileProgress(host, urlPath, localFile, callback, context, nullptr);
}

int32_t LM_CALL xfa704a3f(const LMChar* host, const LMChar* urlPath, int64_t offset, int32_t length,
                          void* buffer, LMProgressCallback callback, void* context) {
    if (host == nullptr || urlPath == nullptr || buffer == nullptr)
        return LeaveError(LM_ERROR_BAD_ARGUMENT, -1);
    return Transfer(host, callback, context, -1, [&](WebConnection& connection) {
        return ReadWebFileRange(connection, urlPath, offset, length, buffer);
    });
}
