/* The tables of a 32-bit Windows module's file. */
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Platform.h"

class PeImage {
public:
    /* Reads a file. Throws std::runtime_error when it cannot be read or is no 32-bit module. */
    explicit PeImage(const std::wstring& path);

    [[nodiscard]] WORD Machine() const { return headers.FileHeader.Machine; }
    [[nodiscard]] bool IsDll() const { return (headers.FileHeader.Characteristics & IMAGE_FILE_DLL) != 0; }
    [[nodiscard]] DWORD SymbolCount() const { return headers.FileHeader.NumberOfSymbols; }
    [[nodiscard]] std::vector<std::string> SectionNames() const;

    /* The exported names, in the order of the file, and how many functions are exported in all. */
    [[nodiscard]] std::vector<std::string> ExportedNames() const;
    [[nodiscard]] DWORD ExportedFunctionCount() const;

    /* What is imported from each module, whose names are in lower case: a name, or "#" and an ordinal. */
    [[nodiscard]] std::map<std::string, std::set<std::string>> Imports() const;

private:
    template <class Record>
    Record At(DWORD address) const;
    std::string TextAt(DWORD address) const;
    size_t OffsetOf(DWORD address) const;
    IMAGE_EXPORT_DIRECTORY ExportDirectory() const;
    std::set<std::string> ImportedFrom(DWORD lookupTable) const;

    std::string bytes;
    IMAGE_NT_HEADERS32 headers{};
    std::vector<IMAGE_SECTION_HEADER> sections;
};
