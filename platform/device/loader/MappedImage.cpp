#include "MappedImage.h"

#include <sys/mman.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <fstream>

namespace {

// Positions of fields in the headers, counted from "PE".
constexpr uint32_t machineField = 4;
constexpr uint32_t sectionCountField = 6;
constexpr uint32_t entryField = 24 + 16;
constexpr uint32_t baseField = 24 + 28;
constexpr uint32_t sizeField = 24 + 56;
constexpr uint32_t headersSizeField = 24 + 60;
constexpr uint32_t subsystemField = 24 + 68;
constexpr uint32_t directories = 24 + 96;
constexpr uint32_t sectionTable = directories + 16 * 8;

constexpr uint16_t armMachine = 0x1C0;
constexpr uint16_t windowsCeSubsystem = 9;

struct SectionHeader {
    char name[8];
    uint32_t size;
    uint32_t address;
    uint32_t fileSize;
    uint32_t filePosition;
    uint32_t unused[3];
    uint32_t flags;
};

struct ImportDescriptor {
    uint32_t lookup;
    uint32_t unused[2];
    uint32_t nameAddress;
    uint32_t slots;
};

struct ExportDirectory {
    uint32_t unused[5];
    uint32_t functionCount;
    uint32_t nameCount;
    uint32_t functions;
    uint32_t names;
    uint32_t ordinals;
};

std::vector<char> Contents(const std::string& file) {
    std::ifstream stream(file, std::ios::binary | std::ios::ate);
    if (!stream) throw ImageError(file + " cannot be read");
    std::vector<char> bytes(static_cast<size_t>(stream.tellg()));
    stream.seekg(0);
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

template <class Type>
Type FieldAt(const std::vector<char>& file, size_t position) {
    Type value{};
    if (position + sizeof value > file.size()) throw ImageError("the file is too short to be an image");
    std::memcpy(&value, file.data() + position, sizeof value);
    return value;
}

/* The position of the headers of an image for this kind of device. */
uint32_t CheckedHeaders(const std::vector<char>& file) {
    const auto headers = FieldAt<uint32_t>(file, 60);
    if (std::memcmp(file.data(), "MZ", 2) != 0 || FieldAt<uint32_t>(file, headers) != 0x4550) {
        throw ImageError("the file is no image");
    }
    if (FieldAt<uint16_t>(file, headers + machineField) != armMachine ||
        FieldAt<uint16_t>(file, headers + subsystemField) != windowsCeSubsystem) {
        throw ImageError("the image is not one for Windows CE on ARM");
    }
    return headers;
}

/* "AYGSHELL" for "aygshell.dll". */
std::string LibraryName(std::string name) {
    name.resize(std::min(name.find('.'), name.size()));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char letter) { return static_cast<char>(std::toupper(letter)); });
    return name;
}

int ProtectionOf(uint32_t flags) {
    constexpr uint32_t executable = 0x20000000;
    constexpr uint32_t writable = 0x80000000;
    return PROT_READ | ((flags & executable) != 0 ? PROT_EXEC : 0) |
           ((flags & writable) != 0 ? PROT_WRITE : 0);
}

void SetProtection(void* begin, size_t size, int protection) {
    if (mprotect(begin, size, protection) != 0) throw ImageError("the image cannot be protected");
}

}  // namespace

MappedImage::Mapping::Mapping(uintptr_t base, size_t size)
    : memory_(mmap(reinterpret_cast<void*>(base), size, PROT_READ | PROT_WRITE,
                   MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0)),
      size_(size) {
    if (memory_ == reinterpret_cast<void*>(base)) return;
    // An emulator may map it elsewhere in place of failing.
    if (memory_ != MAP_FAILED) munmap(memory_, size_);
    throw ImageError("there is no room for the image at its base");
}

MappedImage::Mapping::~Mapping() {
    munmap(memory_, size_);
}

/* Debuggers stop here to learn what has been mapped where. */
extern "C" [[gnu::noinline]] void ImageIsMapped([[maybe_unused]] const char* file,
                                                [[maybe_unused]] uintptr_t base) {}

MappedImage::MappedImage(const std::string& file, uintptr_t base, const Resolver& resolve)
    : MappedImage(Contents(file), base, resolve) {
    ImageIsMapped(file.c_str(), base);
}

MappedImage::MappedImage(const std::vector<char>& file, uintptr_t base, const Resolver& resolve)
    : base_(base),
      preferredBase_(FieldAt<uint32_t>(file, CheckedHeaders(file) + baseField)),
      headers_(CheckedHeaders(file)),
      size_(FieldAt<uint32_t>(file, headers_ + sizeField)),
      mapping_(base, size_) {
    CopySections(file);
    Relocate();
    BindImports(resolve);
    Protect();
}

MappedImage::~MappedImage() = default;

template <class Type>
Type& MappedImage::At(uint32_t offset) const {
    BytesAt(offset, sizeof(Type));
    return *reinterpret_cast<Type*>(base_ + offset);
}

const char* MappedImage::TextAt(uint32_t offset) const {
    const char* const text = &At<char>(offset);
    if (memchr(text, 0, size_ - offset) == nullptr) throw ImageError("a name in the image has no end");
    return text;
}

uint32_t MappedImage::DirectoryOf(Directory directory) const {
    return At<uint32_t>(headers_ + directories + 8 * static_cast<uint32_t>(directory));
}

std::string_view MappedImage::BytesAt(uint32_t offset, size_t size) const {
    if (offset > size_ || size > size_ - offset) throw ImageError("a table of the image points out of it");
    return {reinterpret_cast<const char*>(base_ + offset), size};
}

void MappedImage::CopySections(const std::vector<char>& file) const {
    const auto copy = [&](uint32_t address, uint32_t position, uint32_t size) {
        if (size == 0) return;
        if (position > file.size() || size > file.size() - position) {
            throw ImageError("the image's file is cut off");
        }
        At<char>(address + size - 1);
        std::memcpy(&At<char>(address), file.data() + position, size);
    };
    copy(0, 0, FieldAt<uint32_t>(file, headers_ + headersSizeField));
    for (uint32_t i = 0; i < At<uint16_t>(headers_ + sectionCountField); ++i) {
        const auto& section = At<SectionHeader>(headers_ + sectionTable + i * 40);
        copy(section.address, section.filePosition, std::min(section.fileSize, section.size));
    }
}

void MappedImage::Relocate() const {
    const auto distance = static_cast<uint32_t>(base_ - preferredBase_);
    const uint32_t begin = DirectoryOf(relocations);
    const uint32_t end = begin + At<uint32_t>(headers_ + directories + 8 * relocations + 4);
    if (begin == end && distance != 0) throw ImageError("the image cannot be moved from its base");
    for (uint32_t block = begin; block < end;) {
        const auto page = At<uint32_t>(block);
        const auto size = At<uint32_t>(block + 4);
        if (size < 8) throw ImageError("the relocations of the image make no sense");
        for (uint32_t entry = block + 8; entry < block + size; entry += 2) {
            const auto relocation = At<uint16_t>(entry);
            if (relocation >> 12 == 0) continue;
            if (relocation >> 12 != 3) throw ImageError("the image has a relocation of an unknown kind");
            At<uint32_t>(page + (relocation & 0xFFF)) += distance;
        }
        block += size;
    }
}

void MappedImage::BindImports(const Resolver& resolve) const {
    const uint32_t table = DirectoryOf(imports);
    if (table == 0) return;
    for (uint32_t i = 0; At<ImportDescriptor>(table + i * 20).nameAddress != 0; ++i) {
        const auto& descriptor = At<ImportDescriptor>(table + i * 20);
        const std::string library = LibraryName(TextAt(descriptor.nameAddress));
        for (uint32_t slot = 0; At<uint32_t>(descriptor.lookup + slot) != 0; slot += 4) {
            const auto wanted = At<uint32_t>(descriptor.lookup + slot);
            const bool byOrdinal = (wanted & 0x80000000) != 0;
            const std::string function =
                byOrdinal ? "#" + std::to_string(wanted & 0xFFFF) : TextAt(wanted + 2);
            void* const address = resolve(library, function);
            if (address == nullptr) {
                throw ImageError("the image imports " + library + "!" + function + ", which is not there");
            }
            At<uint32_t>(descriptor.slots + slot) = reinterpret_cast<uintptr_t>(address);
        }
    }
}

void MappedImage::Protect() const {
    for (uint32_t i = 0; i < At<uint16_t>(headers_ + sectionCountField); ++i) {
        const auto& section = At<SectionHeader>(headers_ + sectionTable + i * 40);
        SetProtection(&At<char>(section.address), section.size, ProtectionOf(section.flags));
    }
    SetProtection(reinterpret_cast<void*>(base_), 1, PROT_READ);
    auto* const begin = reinterpret_cast<char*>(base_);
    __builtin___clear_cache(begin, begin + size_);
}

void* MappedImage::Entry() const {
    return &At<char>(At<uint32_t>(headers_ + entryField));
}

void* MappedImage::Export(std::string_view name) const {
    if (DirectoryOf(exports) == 0) return nullptr;
    const auto& directory = At<ExportDirectory>(DirectoryOf(exports));
    for (uint32_t i = 0; i < directory.nameCount; ++i) {
        if (TextAt(At<uint32_t>(directory.names + 4 * i)) != name) continue;
        const auto index = At<uint16_t>(directory.ordinals + 2 * i);
        return &At<char>(At<uint32_t>(directory.functions + 4 * index));
    }
    return nullptr;
}
