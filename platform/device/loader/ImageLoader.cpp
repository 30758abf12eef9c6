/* The simulated handheld's loader, where it can load what the device loads. */
#include "Platform.h"

#include <array>
#include <memory>
#include <utility>

#include "Allocations.h"
#include "Device.h"
#include "DeviceHeap.h"
#include "Imports.h"
#include "MappedImage.h"
#include "Violations.h"

namespace {

using Entry = BOOL WINAPI(HINSTANCE instance, DWORD reason, LPVOID reserved);

/* A loaded library, and the blocks of the heap that were there before it. */
struct Module {
    MappedImage image;
    size_t earlierBlocks;

    BOOL CallEntry(DWORD reason) const {
        auto* const entry = reinterpret_cast<Entry*>(image.Entry());
        return entry(Device::Current().LibraryInstance(), reason, nullptr);
    }
};

/* Where the next library goes: every load takes another place, the one that the image was made for among them. */
uintptr_t NextBase() {
    constexpr std::array<uintptr_t, 4> places = {0x10000000, 0x01E00000, 0x31270000, 0x12340000};
    static size_t loads = 0;
    return places[loads++ % places.size()];
}

void CheckHeap(const Module& module) {
    const size_t blocks = DeviceHeapBlocks();
    if (blocks <= module.earlierBlocks) return;
    simulator::Violate("the library has left " + std::to_string(blocks - module.earlierBlocks) +
                       " blocks on the heap");
}

/* Maps the library; null, and a violation, when it cannot be. */
std::unique_ptr<Module> Map(const std::string& file) {
    const simulator::OwnWork ownWork;
    const size_t blocks = DeviceHeapBlocks();
    try {
        return std::unique_ptr<Module>(new Module{MappedImage(file, NextBase(), FindImport), blocks});
    } catch (const ImageError& error) {
        simulator::Violate(file + " cannot be loaded: " + error.what());
        return nullptr;
    }
}

}  // namespace

LoadedLibrary Device::LoadLibraryFile(const std::string& file) {
    std::unique_ptr<Module> module = Map(file);
    if (module == nullptr) return {};
    if (module->CallEntry(DLL_PROCESS_ATTACH) != FALSE) return LoadedLibrary(module.release());
    CheckHeap(*module);
    return {};
}

LoadedLibrary::LoadedLibrary(LoadedLibrary&& other) noexcept
    : module_(std::exchange(other.module_, nullptr)) {}

LoadedLibrary& LoadedLibrary::operator=(LoadedLibrary&& other) noexcept {
    if (this == &other) return *this;
    Unload();
    module_ = std::exchange(other.module_, nullptr);
    return *this;
}

LoadedLibrary::~LoadedLibrary() {
    Unload();
}

void LoadedLibrary::Unload() {
    const std::unique_ptr<Module> module(static_cast<Module*>(std::exchange(module_, nullptr)));
    if (module == nullptr) return;
    module->CallEntry(DLL_PROCESS_DETACH);
    CheckHeap(*module);
}

void* LoadedLibrary::Symbol(const char* name) const {
    return module_ != nullptr ? static_cast<Module*>(module_)->image.Export(name) : nullptr;
}
