/* An image of a library, attached from Load until it is destroyed. */
#pragma once

#include "Platform.h"

#include <memory>
#include <string>

#include "MappedImage.h"

class LoadedImage {
public:
    /* Maps the image in a file of this computer, each time to another place, and attaches it as the device's
     * library. Null when the image refuses to be attached, after it has been detached again; or when it
     * cannot be mapped, which is a violation. */
    static std::unique_ptr<LoadedImage> Load(const std::string& file);

    LoadedImage(const LoadedImage&) = delete;
    LoadedImage& operator=(const LoadedImage&) = delete;

    /* Detaches it. */
    ~LoadedImage();

    void* Export(const char* name) const { return image_.Export(name); }

private:
    static std::unique_ptr<LoadedImage> Map(const std::string& file);

    explicit LoadedImage(const std::string& file);
    BOOL CallEntry(DWORD reason) const;

    MappedImage image_;
};

/* Where the next image goes. */
uintptr_t NextBase();
