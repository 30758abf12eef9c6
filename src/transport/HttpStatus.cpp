#include "transport/HttpStatus.h"

#include "LMOnline.h"
#include "base/LastError.h"
#include "base/Trace.h"

namespace {

constexpr DWORD firstRefusal = 300;
constexpr DWORD noStatus = 1000;

}  // namespace

DWORD GetHttpStatus(HINTERNET request) {
    DWORD status = noStatus;
    DWORD size = sizeof status;
    HttpQueryInfoW(request, HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER, &status, &size, nullptr);
    if constexpr (isTraced) TraceCall(TEXT("HTTP status"), nullptr, status, status != noStatus);
    return status;
}

DWORD GetRefusal(HINTERNET request) {
    const DWORD status = GetHttpStatus(request);
    if (status < firstRefusal) return ERROR_SUCCESS;
    return status == noStatus ? ErrorOfFailedCall() : LM_ERROR_HTTP_STATUS | LM_ERROR_STATUS(status);
}
