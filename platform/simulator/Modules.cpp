/* The modules of the process: the program, and the library that it has loaded. */
#include "Platform.h"

#include "Modules.h"

#include <algorithm>
#include <cstring>

#include "Call.h"
#include "Device.h"
#include "Text.h"

namespace {

using simulator::Call;

const HMODULE program = reinterpret_cast<HMODULE>(uintptr_t{0x00010000});
const HMODULE library = reinterpret_cast<HMODULE>(uintptr_t{0x01E00000});

constexpr std::u16string_view programPath = u"\\Program Files\\App\\Program.exe";

std::u16string& LibraryPath() {
    static auto& path = *new std::u16string;
    return path;
}

/* The path of a module's file; empty when there is no such module. */
std::u16string PathOf(HMODULE module) {
    if (module == nullptr || module == program) return std::u16string(programPath);
    return module == library ? LibraryPath() : std::u16string();
}

}  // namespace

HMODULE WINAPI GetModuleHandleW(LPCWSTR name) {
    Call call("GetModuleHandleW");
    call.Arguments({simulator::Quoted(name)});
    if (call.MustFail()) return call.Fails(HMODULE{}, "null", call.OrderedError());
    if (name != nullptr) return call.Fails(HMODULE{}, "null", ERROR_MOD_NOT_FOUND);
    return call.Returns(program, "program");
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

std::string simulator::ModuleName(HMODULE module) {
    if (module == library) return "library";
    if (module == program) return "program";
    return PointerText(module);
}

void simulator::ResetModules() {
    LibraryPath() = u"\\Program Files\\App\\OrvandeOnline.dll";
}

HINSTANCE Device::LibraryInstance() const {
    return library;
}

void Device::SetLibraryPath(std::u16string_view path) {
    LibraryPath() = path;
}
