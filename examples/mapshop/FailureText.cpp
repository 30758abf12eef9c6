#include "FailureText.h"

#include <string_view>

#include "LMOnline.h"
#include "NumberText.h"

namespace {

constexpr uint32_t Http(uint32_t status) {
    return LM_ERROR_HTTP_STATUS + status;
}

struct Reason {
    uint32_t first;
    uint32_t last;
    const wchar_t* text;  // {host} and {what} stand for what was asked
};

// The first one that fits counts. Codes below 12000 are the system's, those below 13000 WinINet's.
constexpr Reason reasons[] = {
    {2, 2, L"the file is not there any more; try again"},
    {3, 3, L"its folder does not exist, or its name is too long; name another file"},
    {5, 5, L"access to it is denied; name a file that may be written"},
    {8, 8, L"memory ran out; close other programs and try again"},
    {13, 13, L"what {host} answered cannot be read; try again later"},
    {14, 14, L"memory ran out; close other programs and try again"},
    {19, 19, L"the storage is write-protected; unlock it, or name a file elsewhere"},
    {32, 32, L"another program has it open; close it there"},
    {112, 112, L"there is no room for it; free some and try again"},
    {123, 123, L"no file can have that name; name another one"},
    {183, 183, L"a file of that name is there; delete or rename one of the two"},
    {10054, 10054, L"the connection to {host} was lost; try again"},
    {12002, 12002, L"{host} does not answer; try again, or check the connection"},
    {12007, 12007, L"the host {host} is not known; check its name and the connection"},
    {12029, 12029, L"{host} cannot be reached; check the connection, or try again later"},
    {12030, 12031, L"the connection to {host} was lost; try again"},
    {12152, 12152, L"what answers at {host} is no web server; check its name and the proxy settings"},
    {12163, 12163, L"this device is not connected; connect it and try again"},
    {12165, 12165, L"the proxy cannot be reached; check the proxy settings"},
    {12000, 12999, L"the network reports an error; check the connection and try again"},
    {Http(401), Http(401), L"{host} gives {what} only to users whom it knows; ask who runs it"},
    {Http(403), Http(403), L"{host} does not give {what} to anybody; ask who runs it"},
    {Http(404), Http(404), L"{host} does not have {what}; check the name"},
    {Http(407), Http(407),
     L"the proxy wants to know its user; sign in to the network, or check its settings"},
    {Http(416), Http(416), L"{what} has no such part; ask for one that ends earlier"},
    {Http(300), Http(399), L"{what} is somewhere else by now; ask who runs {host} for its place"},
    {Http(500), Http(599), L"{host} is in trouble; try again later"},
    {Http(0), Http(0xFFFFFF), L"{host} refused {what}; check the name"},
    {LM_ERROR_SERVICE_STATUS, LM_ERROR_SERVICE_STATUS + 0xFFFFFF,
     L"the service refused; try again later, or ask who runs {host}"},
    {LM_ERROR_REPLY_ENDED, LM_ERROR_REPLY_ENDED, L"the reply ended early; try again"},
    {LM_ERROR_CANCELLED, LM_ERROR_CANCELLED, L"it was cancelled"},
    {LM_ERROR_BAD_ARGUMENT, LM_ERROR_BAD_ARGUMENT, L"the library does not take it; ask for something else"},
    {0, 0xFFFFFFFF, L"the system reports an error; try again"},
};

const wchar_t* ReasonOf(uint32_t cause) {
    const Reason* reason = reasons;
    while (cause < reason->first || cause > reason->last)
        ++reason;
    return reason->text;
}

/* The reason with the names in their places. */
std::wstring Filled(std::wstring_view reason, const Asked& asked) {
    std::wstring text;
    for (size_t open; (open = reason.find(L'{')) != std::wstring_view::npos;) {
        const size_t close = reason.find(L'}', open);
        text += reason.substr(0, open);
        text += reason.substr(open, close - open) == L"{host" ? asked.host : asked.what;
        reason.remove_prefix(close + 1);
    }
    return text.append(reason);
}

std::wstring HexText(uint32_t number) {
    std::wstring text = L"0x";
    for (int shift = 28; shift >= 0; shift -= 4)
        text += L"0123456789ABCDEF"[number >> shift & 15U];
    return text;
}

std::wstring CodeText(uint32_t cause) {
    if (LM_ERROR_KIND(cause) == LM_ERROR_HTTP_STATUS) return L"HTTP " + DecimalText(LM_ERROR_STATUS(cause));
    if (LM_ERROR_KIND(cause) == LM_ERROR_SERVICE_STATUS)
        return L"status " + DecimalText(LM_ERROR_STATUS(cause));
    constexpr uint32_t ownCode = 0x20000000U;
    return (cause & ownCode) != 0 ? HexText(cause) : DecimalText(cause);
}

}  // namespace

std::wstring FailureSentence(const std::wstring& lead, uint32_t cause, const Asked& asked) {
    return lead + L": " + Filled(ReasonOf(cause), asked) + L" (" + CodeText(cause) + L").";
}
