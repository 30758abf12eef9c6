/* The online library, loaded when it is needed. */
#pragma once

#include <windows.h>

#include <string>

#include "LMOnline.h"

/* OrvandeOnline.dll from the program's own folder, and its functions; unloaded when the object is
 * destroyed. */
class OnlineLibrary {
public:
    OnlineLibrary();
    ~OnlineLibrary();
    OnlineLibrary(const OnlineLibrary&) = delete;
    OnlineLibrary& operator=(const OnlineLibrary&) = delete;

    /* Why the library cannot be used, naming the file at fault; empty when it can. The functions below may be
     * called only then. */
    const std::wstring& Problem() const { return problem; }

    decltype(&LMMapShopSearch) mapShopSearch = nullptr;
    decltype(&LMMapShopGetNext) mapShopGetNext = nullptr;
    decltype(&LMMapShopClose) mapShopClose = nullptr;
    decltype(&LMDownloadWebFileProgress) downloadWebFile = nullptr;
    decltype(&xfa704a3f) readWebFileRange = nullptr;

private:
    template <class Function>
    void Find(Function& function, const char* name);

    HMODULE module = nullptr;
    std::wstring path;
    std::wstring problem;
};
