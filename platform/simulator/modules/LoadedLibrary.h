#pragma once

#include <utility>

/* A shared build of the library, loaded into this process as the device's loader would. Unloaded at the
 * latest when this is destroyed. */
class LoadedLibrary {
public:
    LoadedLibrary() = default;
    LoadedLibrary(LoadedLibrary&& other) noexcept : module_(std::exchange(other.module_, nullptr)) {}
    LoadedLibrary& operator=(LoadedLibrary&& other) noexcept {
        if (this == &other) return *this;
        Unload();
        module_ = std::exchange(other.module_, nullptr);
        return *this;
    }
    ~LoadedLibrary() { Unload(); }

    /* False when the library refused to attach, or after Unload. */
    bool IsLoaded() const { return module_ != nullptr; }

    /* The exported function of that name, null when there is none. Function is its type, calling convention
     * included: Find<int32_t WINAPI(void*)>("name"). */
    template <class Function>
    Function* Find(const char* name) const {
        return reinterpret_cast<Function*>(Symbol(name));
    }

    /* Detaches the library and runs its static destructors. Staying in memory after that is a violation.
     * Nothing happens when it is not loaded. */
    void Unload();

private:
    friend class DeviceModules;
    explicit LoadedLibrary(void* module) : module_(module) {}
    void* Symbol(const char* name) const;

    void* module_ = nullptr;
};
