#include "transport/WebConnection.h"

#include "base/Trace.h"
#include "transport/HttpStatus.h"
#include "transport/NetworkConnection.h"
#include "ui/MessageBoxes.h"

WebConnection::WebConnection(const WCHAR* hostName, bool withConnectionManager, bool overHttps)
    : secure(overHttps), host(hostName), useConnectionManager(withConnectionManager) {}

WebConnection::~WebConnection() {
    Close();
}

bool WebConnection::AcceptsRoaming() const {
    if (roamingWarningAccepted || ownerWindow == nullptr || !IsRoaming()) return true;
    const int answer = ShowTranslatedMessage(ownerWindow, MB_OKCANCEL,
                                             TEXT("Your phone is roaming, and you may incur data charges."));
    roamingWarningAccepted = answer != IDCANCEL;
    return roamingWarningAccepted;
}

bool WebConnection::Connect() {
    if (state == failed) return false;
    failure = {};
    if (state == connected) return true;
    state = failed;
    if (useConnectionManager) {
        if (!AcceptsRoaming()) return failure.Note(ERROR_CANCELLED);
        EstablishNetworkConnection();
        holdsManagedConnection = true;
    }
    const INTERNET_PORT port = secure ? INTERNET_DEFAULT_HTTPS_PORT : INTERNET_DEFAULT_HTTP_PORT;
    connection.Reset(InternetConnectW(sharedSession.Get(), host.c_str(), port, nullptr, nullptr,
                                      INTERNET_SERVICE_HTTP, 0, 0));
    if constexpr (isTraced) TraceCall(TEXT("connect"), host.c_str(), port, bool{connection});
    if (!connection) return failure.NoteFailedCall();
    state = connected;
    return true;
}

bool WebConnection::OpenAndSend(const WCHAR* path, const WCHAR* verb, bool secureRequest) {
    if (!Connect()) return false;
    const DWORD flags = INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_NO_AUTO_REDIRECT |
                        INTERNET_FLAG_NO_COOKIES | INTERNET_FLAG_RESYNCHRONIZE |
                        INTERNET_FLAG_PRAGMA_NOCACHE | (secureRequest ? INTERNET_FLAG_SECURE : 0);
    request.Reset(HttpOpenRequestW(connection.Get(), verb, path, nullptr, nullptr, nullptr, flags, 0));
    if constexpr (isTraced)
        TraceCall(verb != nullptr ? verb : TEXT("GET"), path, request ? 1 : 0, bool{request});
    if (!request) failure.NoteFailedCall();
    const bool isSent = HttpSendRequestW(request.Get(), nullptr, 0, nullptr, 0) != FALSE;
    if constexpr (isTraced) TraceCall(TEXT("send"), nullptr, 0, isSent);
    if (!isSent) failure.NoteFailedCall();
    return isSent;
}

DWORD WebConnection::GetStatus() const {
    return GetHttpStatus(request.Get());
}

int64_t WebConnection::GetContentLength() const {
    WCHAR text[15]{};
    DWORD size = sizeof text;
    int64_t length = -1;
    if (HttpQueryInfoW(request.Get(), HTTP_QUERY_CONTENT_LENGTH, text, &size, nullptr))
        swscanf(text, TEXT("%I64d"), &length);
    if constexpr (isTraced) Trace(TEXT("length"), nullptr, length, 0);
    return length;
}

bool WebConnection::MayGoOn() const {
    if (progressCallback == nullptr) return true;
    const int answer = progressCallback(callbackContext);
    if constexpr (isTraced) Trace(TEXT("callback"), nullptr, answer, 0);
    return answer != 0;
}

void WebConnection::Close() {
    request.Reset();
    connection.Reset();
    state = notConnected;
    host.clear();
}
