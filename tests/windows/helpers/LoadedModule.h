/* A DLL that a test loads. */
#pragma once

#include "Platform.h"

#include "base/Owned.h"

/* Loaded for as long as it lives. */
class LoadedModule {
public:
    /* Becomes a pointer to whatever function is asked for. */
    struct Address {
        FARPROC address;

        template <class Function>
        operator Function*() const {
            return reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(address));
        }
    };

    /* Throws std::runtime_error when the file cannot be loaded. */
    explicit LoadedModule(const WCHAR* file);

    /* The function exported by that name. Throws std::runtime_error when there is none. */
    [[nodiscard]] Address Find(const char* name) const;

private:
    struct Kind {
        using Handle = HMODULE;
        static constexpr HMODULE none = nullptr;
        static void Close(HMODULE handle) noexcept { FreeLibrary(handle); }
    };

    Owned<Kind> module;
};
