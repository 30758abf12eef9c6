#include "transport/HttpStatus.h"

#include "LMOnline.h"
#include "base/LastError.h"
#include "base/Trace.h"

namespace {

constexpr DWORD firstRefusal = 300;
constexpr DWORD noStatus = 1000;

/* False, and a last error, when there is none; `status` stays as it was then. */
bool QueryStatus(HINTERNET request, DWORD& status) {
    DWORD size = sizeof status;
    const bool isThere = HttpQueryInfoW(request, HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER, &status,
                                        &size, nullptr) != FALSE;
    if constexpr (isTraced) TraceCall(TEXT("HTTP status"), nullptr, status, isThere);
    return isThere;
}

}  // namespace

DWORD GetHttpStatus(HINTERNET request) {
    DWORD status = noStatus;
    QueryStatus(request, status);
    return status;
}

DWORD GetRefusal(HINTERNET request) {
    DWORD status = noStatus;
    if (!QueryStatus(request, status)) return ErrorOfFailedCall();
    return status < firstRefusal ? ERROR_SUCCESS : LM_ERROR_HTTP_STATUS | LM_ERROR_STATUS(status);
}
