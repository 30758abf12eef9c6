/* The resources of the modules. */
#include "Platform.h"

#include "modules/Resources.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>

#include "machine/Call.h"
#include "machine/Text.h"
#include "machine/Violations.h"
#include "modules/DeviceModules.h"
#include "modules/Modules.h"
#include "modules/Reader.h"

namespace simulator {

namespace {

constexpr uint16_t english = 1033;
constexpr uint16_t stringType = 6;
constexpr UINT stringsPerBlock = 16;

// Each resource keeps its address, which is its handle, as long as the module has it.
using Resources = std::vector<std::unique_ptr<Resource>>;

struct State {
    std::map<HMODULE, Resources> resources;
    std::map<HMODULE, std::vector<Resource>> defaults;
};

State& Current() {
    static State& state = *new State;
    return state;
}

Resources OnHeap(std::vector<Resource> resources) {
    Resources result;
    for (Resource& resource : resources)
        result.push_back(std::make_unique<Resource>(std::move(resource)));
    return result;
}

const Resources& ResourcesOf(HMODULE module) {
    return Current().resources[module != nullptr ? module : ProgramModule()];
}

/* A type or name as a caller gives it: an integer in a pointer's low half, a text "#12", or a text. */
ResourceId IdOf(LPCWSTR text) {
    if (IS_INTRESOURCE(text)) return {static_cast<uint16_t>(reinterpret_cast<uintptr_t>(text)), {}};
    if (text[0] != u'#') return {0, text};
    unsigned number = 0;
    for (const WCHAR* digit = text + 1; *digit >= u'0' && *digit <= u'9' && number <= 0xFFFF; ++digit)
        number = number * 10 + (*digit - u'0');
    return {static_cast<uint16_t>(number), {}};
}

bool IsSame(const ResourceId& one, const ResourceId& other) {
    return one.number == other.number && Folded(one.text) == Folded(other.text);
}

/* The resource behind a handle, which must be that module's. */
const Resource* Find(HMODULE module, HRSRC handle, const Call& call) {
    const Resources& resources = ResourcesOf(module);
    const void* const address = handle;
    const auto found = std::find_if(resources.begin(), resources.end(),
                                    [&](const auto& resource) { return resource.get() == address; });
    if (found != resources.end()) return found->get();
    if (handle != nullptr) call.Violates("this is no resource of the module");
    return nullptr;
}

std::string HandleText(HRSRC handle) {
    return handle != nullptr ? "resource" : "null";
}

std::string TypeText(const ResourceId& type) {
    static const std::map<uint16_t, const char*> names = {
        {4, "RT_MENU"}, {5, "RT_DIALOG"}, {6, "RT_STRING"}, {10, "RT_RCDATA"}, {16, "RT_VERSION"}};
    const auto found = names.find(type.number);
    return type.text.empty() && found != names.end() ? found->second : ResourceText(type);
}

}  // namespace

const Resource* FindResourceOf(HMODULE module, const ResourceId& name, const ResourceId& type) {
    const Resource* first = nullptr;
    for (const auto& resource : ResourcesOf(module)) {
        if (!IsSame(resource->type, type) || !IsSame(resource->name, name)) continue;
        if (resource->language == english) return resource.get();
        if (first == nullptr) first = resource.get();
    }
    return first;
}

const Resource* FindResourceOf(HMODULE module, uint16_t name, uint16_t type) {
    return FindResourceOf(module, ResourceId{name, {}}, ResourceId{type, {}});
}

const Resource* ResourceAt(const void* bytes) {
    for (const auto& [module, resources] : Current().resources) {
        for (const auto& resource : resources) {
            if (resource->bytes.data() == bytes) return resource.get();
        }
    }
    return nullptr;
}

std::u16string_view StringOf(HMODULE module, UINT id) {
    const auto block = static_cast<uint16_t>(id / stringsPerBlock + 1);
    const Resource* const resource = id <= 0xFFFF ? FindResourceOf(module, block, stringType) : nullptr;
    if (resource == nullptr) return {};
    Reader reader(resource->bytes);
    for (UINT before = id % stringsPerBlock; before > 0; --before)
        reader.Skip(size_t{reader.Word()} * sizeof(WCHAR));
    const size_t length = reader.Word();
    const std::string_view units = reader.Bytes(length * sizeof(WCHAR));
    // A block holds nothing but units, so that each of them is aligned.
    const void* const first = units.data();
    return {static_cast<const char16_t*>(first), units.size() / sizeof(WCHAR)};
}

std::string ResourceText(const ResourceId& id) {
    return id.text.empty() ? std::to_string(id.number) : Quoted(id.text);
}

void ResetResources() {
    Current().resources.clear();
    for (const auto& [module, resources] : Current().defaults)
        Current().resources[module] = OnHeap(resources);
}

}  // namespace simulator

using simulator::Call;
using simulator::ModuleName;

HRSRC WINAPI FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type) {
    Call call("FindResourceW");
    const ResourceId nameId = simulator::IdOf(name);
    const ResourceId typeId = simulator::IdOf(type);
    call.Arguments({ModuleName(module), simulator::ResourceText(nameId), simulator::TypeText(typeId)});
    if (call.MustFail()) return call.Fails(HRSRC{}, "null", call.OrderedError());
    if (!simulator::IsLoaded(module)) {
        call.Violates("this module is not loaded");
        return call.Fails(HRSRC{}, "null", ERROR_MOD_NOT_FOUND);
    }
    const Resource* const resource = simulator::FindResourceOf(module, nameId, typeId);
    if (resource == nullptr) return call.Fails(HRSRC{}, "null", ERROR_RESOURCE_NAME_NOT_FOUND);
    const auto handle = reinterpret_cast<HRSRC>(const_cast<Resource*>(resource));
    return call.Returns(handle, simulator::HandleText(handle));
}

HGLOBAL WINAPI LoadResource(HMODULE module, HRSRC handle) {
    Call call("LoadResource");
    call.Arguments({ModuleName(module), simulator::HandleText(handle)});
    if (call.MustFail()) return call.Fails(HGLOBAL{}, "null", call.OrderedError());
    const Resource* const resource = simulator::Find(module, handle, call);
    // The error of the search that found no resource stays.
    if (resource == nullptr) return call.Returns(HGLOBAL{}, "null");
    return call.Returns(HGLOBAL{const_cast<char*>(resource->bytes.data())}, "bytes");
}

LPVOID WINAPI LockResource(HGLOBAL bytes) {
    Call call("LockResource");
    call.Arguments({bytes != nullptr ? "bytes" : "null"});
    if (call.MustFail()) return call.Fails(LPVOID{}, "null", call.OrderedError());
    if (bytes != nullptr && simulator::ResourceAt(bytes) == nullptr) {
        call.Violates("these are no loaded resource's bytes");
        return call.Fails(LPVOID{}, "null", ERROR_INVALID_HANDLE);
    }
    return call.Returns(LPVOID{bytes}, bytes != nullptr ? "bytes" : "null");
}

DWORD WINAPI SizeofResource(HMODULE module, HRSRC handle) {
    Call call("SizeofResource");
    call.Arguments({ModuleName(module), simulator::HandleText(handle)});
    if (call.MustFail()) return call.Fails(DWORD{0}, "0", call.OrderedError());
    const Resource* const resource = simulator::Find(module, handle, call);
    if (resource == nullptr) return call.Fails(DWORD{0}, "0", ERROR_INVALID_HANDLE);
    const auto size = static_cast<DWORD>(resource->bytes.size());
    return call.Returns(size, std::to_string(size));
}

INT WINAPI LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, INT size) {
    Call call("LoadStringW");
    call.Arguments({ModuleName(module), std::to_string(id), std::to_string(size)});
    if (call.MustFail()) return call.Fails(0, "0", call.OrderedError());
    const std::u16string_view text = simulator::StringOf(module, id);
    if (text.empty()) {
        if (size > 0) buffer[0] = 0;
        return call.Fails(0, "0", ERROR_RESOURCE_NAME_NOT_FOUND);
    }
    // Without room, the caller gets the address of the text itself.
    if (size == 0) {
        const WCHAR* const address = text.data();
        std::memcpy(buffer, &address, sizeof address);
    }
    const size_t copied = size > 0 ? std::min(text.size(), static_cast<size_t>(size) - 1) : text.size();
    if (size > 0) {
        std::memcpy(buffer, text.data(), copied * sizeof(WCHAR));
        buffer[copied] = 0;
    }
    const auto length = static_cast<INT>(copied);
    return call.Returns(length, std::to_string(length) + ", " + simulator::Quoted(text.substr(0, copied)));
}

void DeviceModules::SetResources(HINSTANCE module, std::vector<Resource> resources) {
    simulator::Current().resources[module] = simulator::OnHeap(std::move(resources));
}

void DeviceModules::SetDefaultResources(HINSTANCE module, std::vector<Resource> resources) {
    simulator::Current().defaults[module] = std::move(resources);
}
