/* A Windows CE image (PE32 for ARM) in this process's memory, as the device's loader puts it there. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/* Why an image cannot be used: one sentence. */
struct ImageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class MappedImage {
public:
    /* The address of what an image imports from `library` (upper case, without ".DLL") as `function`, a name
     * or "#ordinal"; null when there is no such thing. */
    using Resolver = std::function<void*(std::string_view library, std::string_view function)>;

    /* Maps the image in `file` at `base`, a multiple of 64 KB where nothing else lies, moves its addresses
     * and binds its imports. Code is not writable afterwards, nor are constants; data cannot be executed.
     * Throws ImageError, also for an import that `resolve` does not have. */
    MappedImage(const std::string& file, uintptr_t base, const Resolver& resolve);
    MappedImage(const MappedImage&) = delete;
    MappedImage& operator=(const MappedImage&) = delete;
    ~MappedImage();

    /* The address of its entry point. */
    void* Entry() const;

    /* The address of what is exported under that name, or null. */
    void* Export(std::string_view name) const;

    /* The tables that the headers lead to, by their numbers. */
    enum Directory { exports = 0, imports = 1, resources = 2, relocations = 5 };

    /* The offset of a table from the base; 0 when there is none. */
    uint32_t DirectoryOf(Directory directory) const;

    /* A part of the image. Throws ImageError when it is not all in it. */
    std::string_view BytesAt(uint32_t offset, size_t size) const;

    uintptr_t Base() const { return base_; }

    /* The base that the file asks for. */
    uintptr_t PreferredBase() const { return preferredBase_; }

private:
    class Mapping {
    public:
        Mapping(uintptr_t base, size_t size);
        Mapping(const Mapping&) = delete;
        Mapping& operator=(const Mapping&) = delete;
        ~Mapping();

    private:
        void* memory_;
        size_t size_;
    };

    MappedImage(const std::vector<char>& file, uintptr_t base, const Resolver& resolve);

    void CopySections(const std::vector<char>& file) const;
    void Relocate() const;
    void BindImports(const Resolver& resolve) const;
    void Protect() const;

    /* What lies at an offset from the base. Throws ImageError when that is outside of the image. */
    template <class Type>
    Type& At(uint32_t offset) const;
    const char* TextAt(uint32_t offset) const;

    uintptr_t base_;
    uintptr_t preferredBase_;
    uint32_t headers_;  // the offset of the PE headers
    size_t size_;
    Mapping mapping_;
};
