/* A build of the DLL, used through its exports. */
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "LMOnline.h"

class LibraryTransfers {
public:
    /* Loads the DLL at `path`. Throws std::runtime_error. */
    explicit LibraryTransfers(const std::wstring& path);
    LibraryTransfers(const LibraryTransfers&) = delete;
    LibraryTransfers& operator=(const LibraryTransfers&) = delete;
    ~LibraryTransfers() { FreeLibrary(module_); }

    /* One search for all maps from its beginning to its close: how many there were. With `results` they are
     * kept there. */
    [[nodiscard]] size_t Search(std::vector<MapShopResult>* results) const;

    /* A search for all maps, read but not closed: Close does that. */
    [[nodiscard]] MapShopSearch* Begin() const { return search_(nullptr, 0); }
    void Close(MapShopSearch* search) const { close_(search); }

    /* Downloads into `file`: how often the callback was asked; 0 for a failure. */
    [[nodiscard]] size_t Download(const WCHAR* file) const;

private:
    template <class Function>
    Function* Find(const char* name) const;

    HMODULE module_;
    decltype(&LMMapShopSearch) search_;
    decltype(&LMMapShopGetNext) getNext_;
    decltype(&LMMapShopClose) close_;
    decltype(&LMDownloadWebFileProgress) download_;
};
