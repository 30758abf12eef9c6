/* The registry, for reading: the library never writes it, so the functions that do are not there. */
#include "Platform.h"

#include "storage/Registry.h"

#include <algorithm>
#include <cstring>
#include <map>

#include "machine/Call.h"
#include "machine/Handles.h"
#include "machine/Text.h"
#include "machine/Violations.h"
#include "storage/DeviceStorage.h"

namespace simulator {

namespace {

struct Value {
    DWORD type = 0;
    std::string bytes;
};

/* A key's place: its root and the folded names on the way to it. */
struct Place {
    uintptr_t root = 0;
    std::u16string path;

    bool operator<(const Place& other) const {
        return root != other.root ? root < other.root : path < other.path;
    }
};

using Values = std::map<std::u16string, Value>;  // by folded name

struct OpenKey : Object {
    OpenKey() : Object("key") {}

    Place place;
};

std::map<Place, Values>& Keys() {
    static auto& keys = *new std::map<Place, Values>;
    return keys;
}

bool IsRoot(HKEY key) {
    return key == HKEY_CURRENT_USER || key == HKEY_LOCAL_MACHINE;
}

std::string NameOf(HKEY key) {
    if (key == HKEY_CURRENT_USER) return "HKEY_CURRENT_USER";
    if (key == HKEY_LOCAL_MACHINE) return "HKEY_LOCAL_MACHINE";
    return Handles::Current().NameOf(key);
}

/* The place `path` below `place`. Separators that follow each other count as one, one at the end as none. */
Place Below(Place place, std::u16string_view path) {
    std::u16string name;
    const auto descend = [&] {
        if (!name.empty()) place.path += u'\\' + Folded(name);
        name.clear();
    };
    for (const char16_t unit : path) {
        if (unit == u'\\') {
            descend();
        } else {
            name += unit;
        }
    }
    descend();
    return place;
}

/* Makes the key and those above it. */
Values& Make(const Place& place) {
    for (size_t end = place.path.find(u'\\', 1); end != std::u16string::npos;
         end = place.path.find(u'\\', end + 1)) {
        Keys()[{place.root, place.path.substr(0, end)}];
    }
    return Keys()[place];
}

Place RootPlace(HKEY root) {
    return {reinterpret_cast<uintptr_t>(root), {}};
}

/* Where an open or predefined key is; nothing when the handle is neither. */
std::optional<Place> PlaceOf(HKEY key, const Call& call) {
    if (IsRoot(key)) return RootPlace(key);
    const auto* const open = Handles::Current().Find<OpenKey>(key, call);
    if (open == nullptr) return std::nullopt;
    return open->place;
}

constexpr REGSAM writingAccess =
    KEY_SET_VALUE | KEY_CREATE_SUB_KEY | KEY_CREATE_LINK | DELETE | WRITE_DAC | WRITE_OWNER;

/* Copies the bytes as they are stored: no terminator is added. */
LONG Gives(Call& call, const Value& value, DWORD* type, BYTE* data, DWORD* size) {
    const auto needed = static_cast<DWORD>(value.bytes.size());
    const std::string described =
        ", type " + std::to_string(value.type) + ", " + std::to_string(needed) + " bytes";
    if (type != nullptr) *type = value.type;
    const DWORD room = size != nullptr ? *size : 0;
    if (size != nullptr) *size = needed;
    if (data != nullptr && room < needed) {
        // What the buffer holds then is undefined: nobody shall rely on it.
        std::memset(data, 0xCC, room);
        return call.Returns(LONG{ERROR_MORE_DATA}, std::to_string(ERROR_MORE_DATA) + described);
    }
    if (data != nullptr && needed != 0) std::memcpy(data, value.bytes.data(), needed);
    return call.Returns(LONG{ERROR_SUCCESS}, "0" + described);
}

Values* ForTest(HKEY root, std::u16string_view key) {
    if (IsRoot(root)) return &Make(Below(RootPlace(root), key));
    Violate("only HKEY_CURRENT_USER and HKEY_LOCAL_MACHINE are simulated");
    return nullptr;
}

}  // namespace

void ResetRegistry() {
    Keys().clear();
}

}  // namespace simulator

using simulator::Call;
using simulator::Handles;
using simulator::Quoted;

LSTATUS WINAPI RegOpenKeyExW(HKEY key, LPCWSTR path, DWORD options, REGSAM access, PHKEY result) {
    Call call("RegOpenKeyExW");
    call.Arguments({simulator::NameOf(key), Quoted(path), std::to_string(options), simulator::Hex8(access)});
    const auto place = simulator::PlaceOf(key, call);
    if (!place) return call.Code(ERROR_INVALID_HANDLE);
    if (call.MustFail()) return call.Code(call.OrderedError());
    if (result == nullptr) return call.Code(ERROR_INVALID_PARAMETER);
    if ((access & simulator::writingAccess) != 0) {
        call.Violates("a key is opened for more than reading");
        return call.Code(ERROR_ACCESS_DENIED);
    }
    auto open = std::make_unique<simulator::OpenKey>();
    open->place = simulator::Below(*place, simulator::TextOrEmpty(path));
    const bool exists = open->place.path.empty() || simulator::Keys().contains(open->place);
    if (!exists) return call.Code(ERROR_FILE_NOT_FOUND);
    *result = static_cast<HKEY>(Handles::Current().Open(std::move(open)));
    return call.Returns(LSTATUS{ERROR_SUCCESS}, "0, " + simulator::NameOf(*result));
}

LSTATUS WINAPI RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                                LPDWORD size) {
    Call call("RegQueryValueExW");
    call.Arguments({simulator::NameOf(key), Quoted(name), size != nullptr ? std::to_string(*size) : "null"});
    const auto place = simulator::PlaceOf(key, call);
    if (!place) return call.Code(ERROR_INVALID_HANDLE);
    if (call.MustFail()) return call.Code(call.OrderedError());
    if (reserved != nullptr || (data != nullptr && size == nullptr)) {
        return call.Code(ERROR_INVALID_PARAMETER);
    }
    const auto values = simulator::Keys().find(*place);
    if (values == simulator::Keys().end()) return call.Code(ERROR_FILE_NOT_FOUND);
    const auto value = values->second.find(simulator::Folded(simulator::TextOrEmpty(name)));
    if (value == values->second.end()) return call.Code(ERROR_FILE_NOT_FOUND);
    return simulator::Gives(call, value->second, type, data, size);
}

LSTATUS WINAPI RegCloseKey(HKEY key) {
    Call call("RegCloseKey");
    call.Arguments({simulator::NameOf(key)});
    if (!simulator::PlaceOf(key, call)) return call.Code(ERROR_INVALID_HANDLE);
    Handles::Current().Close(key);
    return call.Code(call.OrderedError());
}

void DeviceStorage::SetRegistryValue(HKEY root, std::u16string_view key, std::u16string_view name, DWORD type,
                                     std::string_view bytes) {
    auto* const values = simulator::ForTest(root, key);
    if (values != nullptr) (*values)[simulator::Folded(name)] = {type, std::string(bytes)};
}

void DeviceStorage::MakeRegistryKey(HKEY root, std::u16string_view key) {
    simulator::ForTest(root, key);
}
