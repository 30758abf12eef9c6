#include "LibraryTransfers.h"

#include <stdexcept>

#include "TransferRequests.h"

namespace {

int LM_CALL CountCall(void* context) {
    ++*static_cast<size_t*>(context);
    return 1;
}

}  // namespace

LibraryTransfers::LibraryTransfers(const std::wstring& path)
    : module_(LoadLibraryW(path.c_str())),
      search_(Find<decltype(LMMapShopSearch)>("LMMapShopSearch")),
      getNext_(Find<decltype(LMMapShopGetNext)>("LMMapShopGetNext")),
      close_(Find<decltype(LMMapShopClose)>("LMMapShopClose")),
      download_(Find<decltype(LMDownloadWebFileProgress)>("LMDownloadWebFileProgress")) {}

template <class Function>
Function* LibraryTransfers::Find(const char* name) const {
    const FARPROC function = GetProcAddress(module_, name);
    if (function == nullptr) throw std::runtime_error("a DLL cannot be loaded, or lacks a function");
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(function));
}

size_t LibraryTransfers::Search(std::vector<MapShopResult>* results) const {
    MapShopSearch* const search = Begin();
    MapShopResult map;
    size_t count = 0;
    while (getNext_(search, &map) != 0) {
        ++count;
        if (results != nullptr) results->push_back(map);
    }
    close_(search);
    return count;
}

size_t LibraryTransfers::Download(const WCHAR* file) const {
    size_t calls = 0;
    DownloadProgress progress{};
    return download_(transferHost, transferPath, file, CountCall, &calls, &progress) == 1 ? calls : 0;
}
