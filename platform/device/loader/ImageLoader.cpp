/* The simulated handheld's loader of libraries: it loads the files that the device loads. */
#include "Platform.h"

#include <memory>
#include <utility>

#include "DeviceHeap.h"
#include "LoadedImage.h"
#include "machine/Allocations.h"
#include "machine/Violations.h"
#include "modules/DeviceModules.h"

namespace {

/* What a test holds of a library: the image, and the blocks that were on the heap before it. */
struct Module {
    std::unique_ptr<LoadedImage> image;
    size_t earlierBlocks;
};

}  // namespace

LoadedLibrary DeviceModules::LoadLibraryFile(const std::string& file) {
    const size_t blocks = DeviceHeapBlocks();
    std::unique_ptr<LoadedImage> image = LoadedImage::Load(file);
    const simulator::OwnWork ownWork;
    if (image != nullptr) return LoadedLibrary(new Module{std::move(image), blocks});
    CheckHeap(blocks);
    return {};
}

void LoadedLibrary::Unload() {
    const std::unique_ptr<Module> module(static_cast<Module*>(std::exchange(module_, nullptr)));
    if (module == nullptr) return;
    module->image.reset();
    CheckHeap(module->earlierBlocks);
}

void* LoadedLibrary::Symbol(const char* name) const {
    return module_ != nullptr ? static_cast<Module*>(module_)->image->Export(name) : nullptr;
}
