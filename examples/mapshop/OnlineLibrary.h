/* The online library, loaded when it is needed. */
#pragma once

#include <windows.h>

#include <string>

#include "LMOnline.h"

/* OrvandeOnline.dll from the program's own folder, and its functions; unloaded when the object is
 * destroyed. */
class OnlineLibrary {
    /* Becomes a pointer to whatever function is asked for. */
    struct Address {
        FARPROC address;

        template <class Function>
        operator Function*() const {
            return reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(address));
        }
    };

    Address Find(const char* name);

    const std::wstring path;
    const HMODULE module;
    std::wstring problem;

public:
    OnlineLibrary();
    ~OnlineLibrary();
    OnlineLibrary(const OnlineLibrary&) = delete;
    OnlineLibrary& operator=(const OnlineLibrary&) = delete;

    /* Why the library cannot be used, naming the file at fault; empty when it can. The functions below may be
     * called only then. */
    const std::wstring& Problem() const { return problem; }

    const decltype(&LMMapShopSearch) mapShopSearch = Find("LMMapShopSearch");
    const decltype(&LMMapShopGetNext) mapShopGetNext = Find("LMMapShopGetNext");
    const decltype(&LMMapShopClose) mapShopClose = Find("LMMapShopClose");
    const decltype(&LMDownloadWebFileProgress) downloadWebFile = Find("LMDownloadWebFileProgress");
    const decltype(&xfa704a3f) readWebFileRange = Find("xfa704a3f");
};
