#include "helpers/LoadedModule.h"

#include <stdexcept>
#include <string>

LoadedModule::LoadedModule(const WCHAR* file) : module(LoadLibraryW(file)) {
    if (!module) throw std::runtime_error("a DLL cannot be loaded: error " + std::to_string(GetLastError()));
}

LoadedModule::Address LoadedModule::Find(const char* name) const {
    const FARPROC address = GetProcAddress(module.Get(), name);
    if (address == nullptr) throw std::runtime_error(std::string(name) + " is not exported");
    return {address};
}
