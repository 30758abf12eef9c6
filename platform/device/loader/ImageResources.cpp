#include "ImageResources.h"

#include <cstring>

namespace {

constexpr uint32_t mark = 0x80000000;  // set in names that are texts, and in entries that lead to a directory

struct DirectoryHeader {
    uint32_t unused[3];
    uint16_t textCount;
    uint16_t numberCount;
};

struct DirectoryEntry {
    uint32_t name;
    uint32_t offset;
};

struct DataEntry {
    uint32_t bytes;  // an offset from the image's base; all others count from the first directory
    uint32_t size;
    uint32_t unused[2];
};

class ResourceTree {
public:
    explicit ResourceTree(const MappedImage& image)
        : image_(image), start_(image.DirectoryOf(MappedImage::resources)) {}

    std::vector<Resource> Resources() const {
        std::vector<Resource> resources;
        if (start_ == 0) return resources;
        for (const DirectoryEntry& type : Entries(0)) {
            for (const DirectoryEntry& name : Entries(type.offset)) {
                for (const DirectoryEntry& language : Entries(name.offset)) {
                    const auto data = Read<DataEntry>(language.offset);
                    Resource& resource = resources.emplace_back();
                    resource.type = Id(type.name);
                    resource.name = Id(name.name);
                    resource.language = static_cast<uint16_t>(language.name);
                    resource.bytes = image_.BytesAt(data.bytes, data.size);
                }
            }
        }
        return resources;
    }

private:
    template <class Type>
    Type Read(uint32_t offset) const {
        Type value;
        std::memcpy(&value, image_.BytesAt(start_ + offset, sizeof value).data(), sizeof value);
        return value;
    }

    std::vector<DirectoryEntry> Entries(uint32_t offset) const {
        const uint32_t directory = offset & ~mark;
        const auto header = Read<DirectoryHeader>(directory);
        const uint32_t count = uint32_t{header.textCount} + header.numberCount;
        std::vector<DirectoryEntry> entries;
        for (uint32_t i = 0; i < count; ++i)
            entries.push_back(Read<DirectoryEntry>(directory + 16 + 8 * i));
        return entries;
    }

    ResourceId Id(uint32_t name) const {
        if ((name & mark) == 0) return {static_cast<uint16_t>(name), {}};
        const uint32_t text = name & ~mark;
        std::u16string units(Read<uint16_t>(text), u'\0');
        const size_t size = units.size() * sizeof(char16_t);
        std::memcpy(units.data(), image_.BytesAt(start_ + text + 2, size).data(), size);
        return {0, units};
    }

    const MappedImage& image_;
    uint32_t start_;
};

}  // namespace

std::vector<Resource> ResourcesOf(const MappedImage& image) {
    return ResourceTree(image).Resources();
}
