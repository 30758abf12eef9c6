#include "LoadedImage.h"

#include <array>

#include "Device.h"
#include "ImageResources.h"
#include "Imports.h"
#include "machine/Allocations.h"
#include "machine/Violations.h"

namespace {

using Entry = BOOL WINAPI(HINSTANCE instance, DWORD reason, LPVOID reserved);

}  // namespace

uintptr_t NextBase() {
    constexpr std::array<uintptr_t, 4> places = {0x10000000, 0x11E00000, 0x21270000, 0x12340000};
    static size_t loads = 0;
    return places[loads++ % places.size()];
}

std::unique_ptr<LoadedImage> LoadedImage::Load(const std::string& file) {
    std::unique_ptr<LoadedImage> image = Map(file);
    if (image == nullptr || image->CallEntry(DLL_PROCESS_ATTACH) == FALSE) return nullptr;
    return image;
}

std::unique_ptr<LoadedImage> LoadedImage::Map(const std::string& file) {
    const simulator::OwnWork ownWork;
    try {
        std::unique_ptr<LoadedImage> image(new LoadedImage(file));
        Device& device = Device::Current();
        device.SetResources(device.LibraryInstance(), ResourcesOf(image->image_));
        return image;
    } catch (const ImageError& error) {
        simulator::Violate(file + " cannot be loaded: " + error.what());
        return nullptr;
    }
}

LoadedImage::LoadedImage(const std::string& file) : image_(file, NextBase(), FindImport) {}

LoadedImage::~LoadedImage() {
    CallEntry(DLL_PROCESS_DETACH);
}

BOOL LoadedImage::CallEntry(DWORD reason) const {
    auto* const entry = reinterpret_cast<Entry*>(image_.Entry());
    return entry(Device::Current().LibraryInstance(), reason, nullptr);
}
