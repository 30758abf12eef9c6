/* The modules of the process: the program, and the library that it has loaded. */
#include "Platform.h"

#include "modules/Modules.h"

#include <algorithm>
#include <cstring>
#include <map>

#include "machine/Call.h"
#include "machine/Text.h"
#include "modules/DeviceModules.h"

namespace {

using simulator::Call;

const HMODULE program = reinterpret_cast<HMODULE>(uintptr_t{0x00010000});
const HMODULE library = reinterpret_cast<HMODULE>(uintptr_t{0x01E00000});

constexpr std::u16string_view programPath = u"\\Program Files\\App\\Program.exe";

std::u16string& LibraryPath() {
    static auto& path = *new std::u16string;
    return path;
}

/* A module that a test put on the device. */
struct AddedModule {
    std::u16string fileName;
    size_t references = 0;
};

std::map<HMODULE, AddedModule>& AddedModules() {
    static auto& modules = *new std::map<HMODULE, AddedModule>;
    return modules;
}

std::u16string_view FileNameOf(std::u16string_view path) {
    const size_t separator = path.find_last_of(u"\\/");
    return separator != std::u16string_view::npos ? path.substr(separator + 1) : path;
}

/* The added module of that path's file name, loaded or not; null when there is none. */
HMODULE FindAdded(LPCWSTR path) {
    const std::u16string name = simulator::Folded(FileNameOf(path));
    for (const auto& [module, added] : AddedModules()) {
        if (simulator::Folded(added.fileName) == name) return module;
    }
    return nullptr;
}

/* The path of a module's file; empty when there is no such module. */
std::u16string PathOf(HMODULE module) {
    if (module == nullptr || module == program) return std::u16string(programPath);
    if (module == library) return LibraryPath();
    const auto found = AddedModules().find(module);
    const bool isLoaded = found != AddedModules().end() && found->second.references > 0;
    return isLoaded ? u"\\Windows\\" + found->second.fileName : std::u16string();
}

/* The loaded module of that name; null when there is none. */
HMODULE FindLoaded(LPCWSTR name) {
    if (name == nullptr) return program;
    const std::u16string wanted = simulator::Folded(FileNameOf(name));
    for (const HMODULE module : {program, library}) {
        if (simulator::Folded(FileNameOf(PathOf(module))) == wanted) return module;
    }
    const HMODULE added = FindAdded(name);
    return added != nullptr && AddedModules()[added].references > 0 ? added : nullptr;
}

}  // namespace

HMODULE WINAPI GetModuleHandleW(LPCWSTR name) {
    Call call("GetModuleHandleW");
    call.Arguments({simulator::Quoted(name)});
    if (call.MustFail()) return call.Fails(HMODULE{}, "null", call.OrderedError());
    const HMODULE module = FindLoaded(name);
    if (module == nullptr) return call.Fails(HMODULE{}, "null", ERROR_MOD_NOT_FOUND);
    return call.Returns(module, simulator::ModuleName(module));
}

HMODULE WINAPI LoadLibraryW(LPCWSTR name) {
    Call call("LoadLibraryW");
    call.Arguments({simulator::Quoted(name)});
    if (call.MustFail()) return call.Fails(HMODULE{}, "null", call.OrderedError());
    const HMODULE module = name != nullptr ? FindAdded(name) : nullptr;
    if (module == nullptr) return call.Fails(HMODULE{}, "null", ERROR_MOD_NOT_FOUND);
    ++AddedModules()[module].references;
    return call.Returns(module, simulator::ModuleName(module));
}

BOOL WINAPI FreeLibrary(HMODULE module) {
    Call call("FreeLibrary");
    call.Arguments({simulator::ModuleName(module)});
    const auto found = AddedModules().find(module);
    if (found == AddedModules().end() || found->second.references == 0) {
        call.Violates("this module is not loaded");
        return call.False(ERROR_MOD_NOT_FOUND);
    }
    --found->second.references;
    return call.MustFail() ? call.False(call.OrderedError()) : call.True();
}

DWORD WINAPI GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD size) {
    Call call("GetModuleFileNameW");
    call.Arguments({simulator::ModuleName(module), std::to_string(size)});
    if (call.MustFail()) return call.Fails(DWORD{0}, "0", call.OrderedError());
    const std::u16string path = PathOf(module);
    if (path.empty()) return call.Fails(DWORD{0}, "0", ERROR_MOD_NOT_FOUND);
    const auto length = static_cast<DWORD>(path.size());
    if (size > length) {
        std::memcpy(buffer, path.c_str(), (length + 1) * sizeof(WCHAR));
        return call.Returns(length, std::to_string(length) + ", " + simulator::Quoted(path));
    }
    // A path that does not fit is cut, without a terminator.
    if (size != 0) std::memcpy(buffer, path.data(), size * sizeof(WCHAR));
    return call.Fails(size, std::to_string(size), ERROR_INSUFFICIENT_BUFFER);
}

HMODULE simulator::ProgramModule() {
    return program;
}

HMODULE simulator::LibraryModule() {
    return library;
}

std::string simulator::ModuleName(HMODULE module) {
    if (module == library) return "library";
    if (module == program) return "program";
    const auto found = AddedModules().find(module);
    return found != AddedModules().end() ? ToUtf8(found->second.fileName) : PointerText(module);
}

bool simulator::IsLoaded(HMODULE module) {
    return module == library || !PathOf(module).empty();
}

void simulator::ResetModules() {
    AddedModules().clear();
    LibraryPath() = u"\\Program Files\\App\\OrvandeOnline.dll";
}

HINSTANCE DeviceModules::ProgramInstance() const {
    return program;
}

HINSTANCE DeviceModules::AddModule(std::u16string_view fileName) {
    constexpr uintptr_t firstModule = 0x02000000;
    constexpr uintptr_t step = 0x00010000;
    const auto module = reinterpret_cast<HMODULE>(firstModule + AddedModules().size() * step);
    AddedModules()[module].fileName = fileName;
    return module;
}

size_t DeviceModules::ModuleReferences(HINSTANCE module) const {
    const auto found = AddedModules().find(module);
    return found != AddedModules().end() ? found->second.references : 0;
}

HINSTANCE DeviceModules::LibraryInstance() const {
    return library;
}

void DeviceModules::SetLibraryPath(std::u16string_view path) {
    LibraryPath() = path;
}
