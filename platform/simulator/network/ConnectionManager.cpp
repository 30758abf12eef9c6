#include "Platform.h"

#include "network/ConnectionManager.h"

#include <cstring>

#include "machine/Call.h"
#include "machine/Handles.h"
#include "machine/Text.h"
#include "network/DeviceNetwork.h"

namespace {

using simulator::Call;
using simulator::Handles;
using simulator::Hex;
using simulator::Hex8;

/* A connection that is up, or was: it may be released any number of times, in later tests too, and need not
 * be. */
struct Link : simulator::Object {
    Link() : Object("link") { mayStayOpen = true; }
};

constexpr GUID mappedNetwork = {0x436EF144, 0xB4FB, 0x4863, {0xA0, 0x41, 0x8F, 0x90, 0x5A, 0x62, 0xC5, 0x72}};

ConnectionAnswers& Answers() {
    static auto& answers = *new ConnectionAnswers;
    return answers;
}

HRESULT Gives(Call& call, HRESULT result, const std::string& detail = "") {
    return call.Returns(result, Hex8(static_cast<uint32_t>(result)) + detail);
}

std::string Described(const GUID& network) {
    if (std::memcmp(&network, &mappedNetwork, sizeof network) == 0) return "mapped";
    return "{" + Hex8(static_cast<uint32_t>(network.Data1)) + "...}";
}

/* The fields that are not zero, by name. */
std::string Described(const CONNMGR_CONNECTIONINFO* info) {
    if (info == nullptr) return "null";
    std::string text;
    const auto add = [&](const char* name, const std::string& value) {
        text += (text.empty() ? "" : ", ") + std::string(name) + " " + value;
    };
    const auto addNumber = [&](const char* name, uint64_t value) {
        if (value != 0) add(name, Hex(value));
    };
    addNumber("dwParams", info->dwParams);
    addNumber("dwFlags", info->dwFlags);
    addNumber("dwPriority", info->dwPriority);
    addNumber("bExclusive", static_cast<uint64_t>(info->bExclusive));
    addNumber("bDisabled", static_cast<uint64_t>(info->bDisabled));
    constexpr GUID none{};
    if (std::memcmp(&info->guidDestNet, &none, sizeof none) != 0) {
        add("guidDestNet", Described(info->guidDestNet));
    }
    addNumber("hWnd", reinterpret_cast<uintptr_t>(info->hWnd));
    addNumber("uMsg", info->uMsg);
    addNumber("lParam", static_cast<uint64_t>(info->lParam));
    addNumber("ulMaxCost", info->ulMaxCost);
    addNumber("ulMinRcvBw", info->ulMinRcvBw);
    addNumber("ulMaxConnLatency", info->ulMaxConnLatency);
    return "{" + text + "}";
}

/* The result that a test ordered, or the scripted one. */
HRESULT ResultOf(const Call& call, HRESULT scripted) {
    return call.MustFail() ? static_cast<HRESULT>(call.OrderedError()) : scripted;
}

}  // namespace

HRESULT WINAPI ConnMgrMapURL(LPCWSTR url, GUID* network, DWORD* index) {
    Call call("ConnMgrMapURL");
    call.Arguments({simulator::Quoted(url), index != nullptr ? std::to_string(*index) : "null"});
    if (url == nullptr || network == nullptr) return Gives(call, E_INVALIDARG);
    const HRESULT result = ResultOf(call, Answers().mapResult);
    if (SUCCEEDED(result)) *network = mappedNetwork;
    return Gives(call, result);
}

HRESULT WINAPI ConnMgrEstablishConnectionSync(CONNMGR_CONNECTIONINFO* info, HANDLE* connection, DWORD timeout,
                                              DWORD* status) {
    Call call("ConnMgrEstablishConnectionSync");
    call.Arguments({Described(info), std::to_string(timeout)});
    if (info == nullptr || connection == nullptr || status == nullptr) return Gives(call, E_INVALIDARG);
    if (info->cbSize != sizeof *info) {
        call.Violates("cbSize is " + std::to_string(info->cbSize));
        return Gives(call, E_INVALIDARG);
    }
    const HRESULT result = ResultOf(call, Answers().establishResult);
    if (FAILED(result)) return Gives(call, result);
    *connection = Handles::Current().Open(std::make_unique<Link>());
    *status = Answers().status;
    return Gives(call, result, ", " + Handles::Current().NameOf(*connection) + ", status " + Hex(*status));
}

HRESULT WINAPI ConnMgrReleaseConnection(HANDLE connection, LONG cache) {
    Call call("ConnMgrReleaseConnection");
    call.Arguments({Handles::Current().NameOf(connection), std::to_string(cache)});
    if (Handles::Current().Find<Link>(connection, call) == nullptr) return Gives(call, E_INVALIDARG);
    return Gives(call, ResultOf(call, Answers().releaseResult));
}

void simulator::ResetConnectionManager() {
    Answers() = ConnectionAnswers{};
}

void DeviceNetwork::SetConnectionAnswers(const ConnectionAnswers& answers) {
    Answers() = answers;
}
