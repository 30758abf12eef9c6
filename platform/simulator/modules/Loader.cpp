/* Loading a shared build of the library as the device's loader would. */
#include "Platform.h"

#include <dlfcn.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "machine/Allocations.h"
#include "machine/Violations.h"
#include "modules/DeviceModules.h"
#include "modules/Modules.h"

namespace {

using simulator::LibraryWork;
using simulator::OwnWork;

using Entry = BOOL WINAPI(HINSTANCE instance, DWORD reason, LPVOID reserved);

Entry* EntryOf(void* module) {
    return reinterpret_cast<Entry*>(dlsym(module, "DllMain"));
}

/* Runs the static initialisers. */
void* Open(const std::string& file) {
    const LibraryWork libraryWork;
    return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
}

/* Runs the static destructors, if nothing else holds the library. */
void Close(void* module) {
    const LibraryWork libraryWork;
    dlclose(module);
}

BOOL Call(Entry& entry, DWORD reason) {
    const LibraryWork libraryWork;
    return entry(simulator::LibraryModule(), reason, nullptr);
}

/* What a loaded library may import: one function of each file, which also brings the file's others into a
 * program that does not call them. */
const void* const imports[] = {
    reinterpret_cast<const void*>(&ConnMgrEstablishConnectionSync),
    reinterpret_cast<const void*>(&DialogBoxIndirectParamW),
    reinterpret_cast<const void*>(&FindResourceW),
    reinterpret_cast<const void*>(&GetFileAttributesW),
    reinterpret_cast<const void*>(&GetLastError),
    reinterpret_cast<const void*>(&GetMenuItemInfoW),
    reinterpret_cast<const void*>(&GetModuleFileNameW),
    reinterpret_cast<const void*>(&GetWindowLongPtrW),
    reinterpret_cast<const void*>(&InternetOpenW),
    reinterpret_cast<const void*>(&MessageBoxW),
    reinterpret_cast<const void*>(&RegOpenKeyExW),
    reinterpret_cast<const void*>(&SHCreateMenuBar),
    reinterpret_cast<const void*>(&SHGetSpecialFolderPathW),
    reinterpret_cast<const void*>(&SendMessageW),
    reinterpret_cast<const void*>(&ShellExecuteExW),
    reinterpret_cast<const void*>(&_wfopen),
    reinterpret_cast<const void*>(&_vsnwprintf),
    reinterpret_cast<const void*>(static_cast<int (*)(const WCHAR*, const WCHAR*, ...)>(&swscanf)),
    reinterpret_cast<const void*>(static_cast<size_t (*)(const WCHAR*)>(&wcslen)),
};

bool IsExported(const void* function) {
    Dl_info info{};
    return dladdr(function, &info) != 0 && info.dli_saddr == function;
}

/* Looked up once: it takes longer than a load. */
bool ProgramExportsImports() {
    static const bool exports = std::all_of(std::begin(imports), std::end(imports), IsExported);
    return exports;
}

/* Detaches and unloads. The library must be gone then: if something holds it, its static destructors have not
 * run, and the next load would find the old state. */
void UnloadModule(void* module) {
    if (Entry* entry = EntryOf(module)) Call(*entry, DLL_PROCESS_DETACH);
    Dl_info info{};
    const bool isKnown = dladdr(dlsym(module, "DllMain"), &info) != 0;
    const std::string file = isKnown ? info.dli_fname : "";
    Close(module);
    if (!isKnown) return;
    void* const remaining = dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (remaining == nullptr) return;
    dlclose(remaining);
    simulator::Violate(file + " stays loaded");
}

}  // namespace

LoadedLibrary DeviceModules::LoadLibraryFile(const std::string& file) {
    const OwnWork ownWork;
    if (!ProgramExportsImports()) {
        simulator::Violate("this program does not export its symbols to libraries that it loads");
        return {};
    }
    void* const module = Open(file);
    if (module == nullptr) {
        simulator::Violate(std::string("the library cannot be loaded: ") + dlerror());
        return {};
    }
    Entry* const entry = EntryOf(module);
    if (entry == nullptr) {
        simulator::Violate(file + " has no DllMain");
        Close(module);
        return {};
    }
    if (Call(*entry, DLL_PROCESS_ATTACH) == FALSE) {
        UnloadModule(module);
        return {};
    }
    return LoadedLibrary(module);
}

void LoadedLibrary::Unload() {
    const OwnWork ownWork;
    if (module_ != nullptr) UnloadModule(std::exchange(module_, nullptr));
}

void* LoadedLibrary::Symbol(const char* name) const {
    return module_ != nullptr ? dlsym(module_, name) : nullptr;
}
