/* The online library, loaded when it is needed. */
#pragma once

#include <windows.h>

#include <string>

#include "LMOnline.h"

/* OrvandeOnline.dll from the program's own folder; unloaded when the object is destroyed. */
class OnlineLibrary {
public:
    /* Becomes a pointer of any type: LMOnline.h has those of the functions. */
    struct Address {
        FARPROC address;

        template <class Function>
        operator Function*() const {
            return reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(address));
        }
    };

    OnlineLibrary();
    ~OnlineLibrary();
    OnlineLibrary(const OnlineLibrary&) = delete;
    OnlineLibrary& operator=(const OnlineLibrary&) = delete;

    /* The library's function of that name; null, and a problem, when it cannot be had. */
    Address Find(const char* name);

    /* Why the library cannot be used, naming the file at fault; empty when it can, and every function that
     * was looked for has been found. */
    const std::wstring& Problem() const { return problem; }

private:
    const std::wstring path;
    const HMODULE module;
    std::wstring problem;
};
