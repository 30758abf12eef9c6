/* WinINet over the scripted web. */
#include "Platform.h"

#include <cstring>
#include <optional>

#include "machine/Call.h"
#include "machine/Handles.h"
#include "machine/Text.h"
#include "network/Web.h"

namespace {

using simulator::Call;
using simulator::Handles;
using simulator::Hex8;
using simulator::Object;
using simulator::PointerText;
using simulator::Quoted;
using simulator::ReplyReader;
using simulator::TextOrEmpty;

struct InternetObject : Object {
    using Object::Object;
};

struct Session : InternetObject {
    Session() : InternetObject("session") {}

    std::u16string agent;
    DWORD accessType = 0;
};

struct Connection : InternetObject {
    Connection() : InternetObject("connection") {}

    WebRequest request;  // what the session and the connection say about requests
};

struct Request : InternetObject {
    Request() : InternetObject("request") {}

    WebRequest request;
    std::optional<ReplyReader> reply;  // since it was sent
};

std::string NameOf(const void* handle) {
    return Handles::Current().NameOf(handle);
}

HINTERNET Opens(Call& call, std::unique_ptr<Object> object, Object* parent) {
    const HINTERNET handle = Handles::Current().Open(std::move(object), parent);
    return call.Returns(handle, NameOf(handle));
}

HINTERNET OpensNothing(Call& call, DWORD error) {
    return call.Fails(HINTERNET{}, "null", error);
}

/* The header names of the information levels, beside the status. */
const char16_t* HeaderOf(DWORD level) {
    switch (level) {
        case HTTP_QUERY_CONTENT_TYPE:
            return u"Content-Type";
        case HTTP_QUERY_CONTENT_LENGTH:
            return u"Content-Length";
        case HTTP_QUERY_LOCATION:
            return u"Location";
        default:
            return nullptr;
    }
}

std::u16string Widened(const std::string& text) {
    return {text.begin(), text.end()};
}

/* The text that an information level stands for. */
std::optional<std::u16string> Information(const ReplyReader& reply, DWORD level, size_t index) {
    if (level != HTTP_QUERY_STATUS_CODE) return reply.Header(HeaderOf(level), index);
    if (index != 0) return std::nullopt;
    return Widened(std::to_string(reply.Status()));
}

BOOL GivesText(Call& call, const std::u16string& text, void* buffer, DWORD* length) {
    const auto size = static_cast<DWORD>(text.size() * sizeof(WCHAR));
    const DWORD needed = size + static_cast<DWORD>(sizeof(WCHAR));
    if (buffer == nullptr || *length < needed) {
        *length = needed;
        return call.False(ERROR_INSUFFICIENT_BUFFER);
    }
    std::memcpy(buffer, text.c_str(), needed);
    *length = size;
    return call.True(Quoted(text));
}

BOOL GivesNumber(Call& call, const std::u16string& text, void* buffer, DWORD* length) {
    DWORD number = 0;
    for (const char16_t unit : text) {
        if (unit < u'0' || unit > u'9') return call.False(ERROR_HTTP_INVALID_HEADER);
        number = number * 10 + (unit - u'0');
    }
    if (buffer == nullptr || *length < sizeof number) {
        *length = sizeof number;
        return call.False(ERROR_INSUFFICIENT_BUFFER);
    }
    std::memcpy(buffer, &number, sizeof number);
    *length = sizeof number;
    return call.True(std::to_string(number));
}

}  // namespace

HINTERNET WINAPI InternetOpenW(LPCWSTR agent, DWORD accessType, LPCWSTR proxy, LPCWSTR bypass, DWORD flags) {
    Call call("InternetOpenW");
    call.Arguments({Quoted(agent), std::to_string(accessType), Quoted(proxy), Quoted(bypass), Hex8(flags)});
    if (call.MustFail()) return OpensNothing(call, call.OrderedError());
    auto session = std::make_unique<Session>();
    session->agent = TextOrEmpty(agent);
    session->accessType = accessType;
    return Opens(call, std::move(session), nullptr);
}

HINTERNET WINAPI InternetConnectW(HINTERNET session, LPCWSTR host, INTERNET_PORT port, LPCWSTR user,
                                  LPCWSTR password, DWORD service, DWORD flags, DWORD_PTR context) {
    Call call("InternetConnectW");
    call.Arguments({NameOf(session), Quoted(host), std::to_string(port), Quoted(user), Quoted(password),
                    std::to_string(service), Hex8(flags), std::to_string(context)});
    auto* const parent = Handles::Current().Find<Session>(session, call);
    if (parent == nullptr) return OpensNothing(call, ERROR_INVALID_HANDLE);
    if (call.MustFail()) return OpensNothing(call, call.OrderedError());
    if (service != INTERNET_SERVICE_HTTP) {
        call.Violates("only HTTP is simulated");
        return OpensNothing(call, ERROR_INVALID_PARAMETER);
    }
    if (host == nullptr || *host == 0) return OpensNothing(call, ERROR_INVALID_PARAMETER);
    auto connection = std::make_unique<Connection>();
    connection->request.agent = parent->agent;
    connection->request.accessType = parent->accessType;
    connection->request.host = host;
    connection->request.port = port;
    return Opens(call, std::move(connection), parent);
}

HINTERNET WINAPI HttpOpenRequestW(HINTERNET connection, LPCWSTR verb, LPCWSTR path, LPCWSTR version,
                                  LPCWSTR referrer, LPCWSTR* acceptTypes, DWORD flags, DWORD_PTR context) {
    Call call("HttpOpenRequestW");
    call.Arguments({NameOf(connection), Quoted(verb), Quoted(path), Quoted(version), Quoted(referrer),
                    PointerText(acceptTypes), Hex8(flags), std::to_string(context)});
    auto* const parent = Handles::Current().Find<Connection>(connection, call);
    if (parent == nullptr) return OpensNothing(call, ERROR_INVALID_HANDLE);
    if (call.MustFail()) return OpensNothing(call, call.OrderedError());
    auto request = std::make_unique<Request>();
    request->request = parent->request;
    request->request.verb = verb != nullptr ? verb : u"GET";
    request->request.path = TextOrEmpty(path);
    request->request.flags = flags;
    request->request.secure = (flags & INTERNET_FLAG_SECURE) != 0;
    return Opens(call, std::move(request), parent);
}

BOOL WINAPI HttpSendRequestW(HINTERNET handle, LPCWSTR headers, DWORD headersLength, LPVOID body,
                             DWORD bodySize) {
    Call call("HttpSendRequestW");
    const bool isTerminated = headersLength == static_cast<DWORD>(-1);
    const std::u16string text = headers == nullptr ? std::u16string()
                                : isTerminated     ? std::u16string(headers)
                                                   : std::u16string(headers, headersLength);
    call.Arguments({NameOf(handle), headers != nullptr ? Quoted(std::u16string_view(text)) : "null",
                    isTerminated ? "-1" : std::to_string(headersLength), body != nullptr ? "body" : "null",
                    std::to_string(bodySize)});
    auto* const object = Handles::Current().Find<Request>(handle, call);
    if (object == nullptr) return call.False(ERROR_INVALID_HANDLE);
    if (call.MustFail()) return call.False(call.OrderedError());
    if (body == nullptr && bodySize != 0) return call.False(ERROR_INVALID_PARAMETER);
    WebRequest request = object->request;
    request.headers = text;
    request.body.assign(static_cast<const char*>(body), bodySize);
    object->reply.reset();
    WebReply reply = simulator::Ask(request);
    if (reply.sendError != 0) return call.False(reply.sendError);
    object->reply.emplace(std::move(reply));
    return call.True();
}

BOOL WINAPI HttpQueryInfoW(HINTERNET handle, DWORD level, LPVOID buffer, LPDWORD length, LPDWORD index) {
    Call call("HttpQueryInfoW");
    call.Arguments({NameOf(handle), Hex8(level)});
    const auto* const object = Handles::Current().Find<Request>(handle, call);
    if (object == nullptr) return call.False(ERROR_INVALID_HANDLE);
    if (call.MustFail()) return call.False(call.OrderedError());
    const DWORD attribute = level & HTTP_QUERY_HEADER_MASK;
    const DWORD modifiers = level & HTTP_QUERY_MODIFIER_FLAGS_MASK;
    const bool isKnown = attribute == HTTP_QUERY_STATUS_CODE || HeaderOf(attribute) != nullptr;
    if (!isKnown || (modifiers & ~static_cast<DWORD>(HTTP_QUERY_FLAG_NUMBER)) != 0) {
        call.Violates("this information is not simulated");
        return call.False(ERROR_HTTP_INVALID_QUERY_REQUEST);
    }
    if (length == nullptr) return call.False(ERROR_INVALID_PARAMETER);
    if (!object->reply) return call.False(ERROR_INTERNET_INCORRECT_HANDLE_STATE);
    const auto text = Information(*object->reply, attribute, index != nullptr ? *index : 0);
    if (!text) return call.False(ERROR_HTTP_HEADER_NOT_FOUND);
    const BOOL given =
        modifiers != 0 ? GivesNumber(call, *text, buffer, length) : GivesText(call, *text, buffer, length);
    if (given != FALSE && index != nullptr) ++*index;
    return given;
}

BOOL WINAPI InternetReadFile(HINTERNET handle, LPVOID buffer, DWORD size, LPDWORD read) {
    Call call("InternetReadFile");
    call.Arguments({NameOf(handle), std::to_string(size)});
    if (read == nullptr) return call.False(ERROR_INVALID_PARAMETER);
    *read = 0;
    auto* const object = Handles::Current().Find<Request>(handle, call);
    if (object == nullptr) return call.False(ERROR_INVALID_HANDLE);
    if (call.MustFail()) return call.False(call.OrderedError());
    if (!object->reply) return call.False(ERROR_INTERNET_INCORRECT_HANDLE_STATE);
    const ReplyReader::Portion portion = object->reply->Read(static_cast<char*>(buffer), size);
    *read = static_cast<DWORD>(portion.bytes);
    if (portion.error == 0) return call.True(std::to_string(portion.bytes));
    return call.Fails(FALSE, "FALSE, " + std::to_string(portion.bytes), portion.error);
}

BOOL WINAPI InternetCloseHandle(HINTERNET handle) {
    Call call("InternetCloseHandle");
    call.Arguments({NameOf(handle)});
    const auto* const object = Handles::Current().Find<InternetObject>(handle, call);
    if (object == nullptr) return call.False(ERROR_INVALID_HANDLE);
    if (object->children != 0) {
        call.Violates(object->name + " is closed before what was opened from it");
    }
    Handles::Current().Close(handle);
    return call.MustFail() ? call.False(call.OrderedError()) : call.True();
}
