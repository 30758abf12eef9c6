#include "frame/ResourceModule.h"

namespace {

constexpr uint32_t firstIdOfResourceLibrary = 5000;

HINSTANCE LoadResourceLibrary() {
    const HINSTANCE module = LoadLibraryW(TEXT("Res.dll"));
    if (module != nullptr) return module;
    const DWORD error = GetLastError();
    MessageBoxW(nullptr, TEXT("Failed to load Res.dll\nPlease re-install the software"), TEXT("Error"),
                MB_ICONERROR);
    SetLastError(error);
    return nullptr;
}

}  // namespace

HINSTANCE GetResourceModule(uint32_t id) {
    if (id >= firstIdOfResourceLibrary) {
        if (resourceModule == nullptr) resourceModule = LoadResourceLibrary();
        return resourceModule;
    }
    if (ownModule == nullptr) ownModule = GetModuleHandleW(nullptr);
    return ownModule;
}
