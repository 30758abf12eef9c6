#include "helpers/ShippedLibrary.h"

#include <stdexcept>

namespace {

template <class Function>
void Find(HMODULE module, Function& function, const char* name) {
    const auto address = reinterpret_cast<void (*)()>(GetProcAddress(module, name));
    if (address == nullptr) throw std::runtime_error(std::string(name) + " is not exported");
    function = reinterpret_cast<Function>(address);
}

}  // namespace

ShippedLibrary::ShippedLibrary() : module(LoadLibraryW(L"OrvandeOnline.dll")) {
    if (module == nullptr)
        throw std::runtime_error("OrvandeOnline.dll: error " + std::to_string(GetLastError()));
    Find(module, mapShopSearch, "LMMapShopSearch");
    Find(module, mapShopGetNext, "LMMapShopGetNext");
    Find(module, mapShopClose, "LMMapShopClose");
    Find(module, downloadWithProgress, "LMDownloadWebFileProgress");
    Find(module, download, "x77fc64c7");
    Find(module, readRange, "xfa704a3f");
}

ShippedLibrary::~ShippedLibrary() {
    FreeLibrary(module);
}

SearchOutcome ShippedLibrary::Search(const void* items, int32_t count) const {
    SearchOutcome outcome;
    auto* const search = mapShopSearch(items, count);
    outcome.gotHandle = search != nullptr;
    MapShopResult result;
    while (mapShopGetNext(search, &result) != 0)
        outcome.results.push_back(result);
    outcome.finalValue = mapShopClose(search);
    return outcome;
}

std::wstring ProgramFolder() {
    WCHAR path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    if (length == 0 || length == MAX_PATH)
        throw std::runtime_error("the program's folder has too long a path");
    const std::wstring whole(path, length);
    return whole.substr(0, whole.find_last_of(L'\\'));
}

std::wstring Widened(std::string_view text) {
    return {text.begin(), text.end()};
}
