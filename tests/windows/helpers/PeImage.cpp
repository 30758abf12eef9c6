#include "helpers/PeImage.h"

#include <cstring>
#include <stdexcept>

#include "helpers/LocalFiles.h"

namespace {

/* The record that begins at `offset`. */
template <class Record>
Record RecordAt(const std::string& bytes, size_t offset) {
    Record record;
    if (offset > bytes.size() || sizeof record > bytes.size() - offset)
        throw std::runtime_error("the file is too short");
    std::memcpy(&record, bytes.data() + offset, sizeof record);
    return record;
}

}  // namespace

PeImage::PeImage(const std::wstring& path) : bytes(ContentOf(path)) {
    const auto dosHeader = RecordAt<IMAGE_DOS_HEADER>(bytes, 0);
    const auto start = static_cast<size_t>(dosHeader.e_lfanew);
    headers = RecordAt<IMAGE_NT_HEADERS32>(bytes, start);
    if (headers.Signature != IMAGE_NT_SIGNATURE ||
        headers.OptionalHeader.Magic != IMAGE_NT_OPTIONAL_HDR32_MAGIC) {
        throw std::runtime_error("the file is no 32-bit module");
    }
    size_t offset =
        start + offsetof(IMAGE_NT_HEADERS32, OptionalHeader) + headers.FileHeader.SizeOfOptionalHeader;
    for (WORD i = 0; i < headers.FileHeader.NumberOfSections; ++i, offset += sizeof(IMAGE_SECTION_HEADER)) {
        sections.push_back(RecordAt<IMAGE_SECTION_HEADER>(bytes, offset));
    }
}

std::vector<std::string> PeImage::SectionNames() const {
    std::vector<std::string> names;
    for (const IMAGE_SECTION_HEADER& section : sections) {
        const auto* const name = reinterpret_cast<const char*>(section.Name);
        names.emplace_back(name, strnlen(name, sizeof section.Name));
    }
    return names;
}

size_t PeImage::OffsetOf(DWORD address) const {
    for (const IMAGE_SECTION_HEADER& section : sections) {
        if (address < section.VirtualAddress || address - section.VirtualAddress >= section.SizeOfRawData)
            continue;
        return section.PointerToRawData + (address - section.VirtualAddress);
    }
    throw std::runtime_error("an address lies in no section");
}

template <class Record>
Record PeImage::At(DWORD address) const {
    return RecordAt<Record>(bytes, OffsetOf(address));
}

std::string PeImage::TextAt(DWORD address) const {
    const size_t start = OffsetOf(address);
    return bytes.substr(start, bytes.find('\0', start) - start);
}

IMAGE_EXPORT_DIRECTORY PeImage::ExportDirectory() const {
    return At<IMAGE_EXPORT_DIRECTORY>(
        headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress);
}

std::vector<std::string> PeImage::ExportedNames() const {
    const IMAGE_EXPORT_DIRECTORY directory = ExportDirectory();
    std::vector<std::string> names;
    for (DWORD i = 0; i < directory.NumberOfNames; ++i) {
        names.push_back(TextAt(At<DWORD>(directory.AddressOfNames + i * sizeof(DWORD))));
    }
    return names;
}

DWORD PeImage::ExportedFunctionCount() const {
    return ExportDirectory().NumberOfFunctions;
}

std::set<std::string> PeImage::ImportedFrom(DWORD lookupTable) const {
    std::set<std::string> imports;
    for (;; lookupTable += sizeof(DWORD)) {
        const auto entry = At<DWORD>(lookupTable);
        if (entry == 0) return imports;
        if (IMAGE_SNAP_BY_ORDINAL32(entry)) {
            imports.insert("#" + std::to_string(IMAGE_ORDINAL32(entry)));
        } else {
            imports.insert(TextAt(entry + offsetof(IMAGE_IMPORT_BY_NAME, Name)));
        }
    }
}

std::map<std::string, std::set<std::string>> PeImage::Imports() const {
    std::map<std::string, std::set<std::string>> imports;
    DWORD address = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (;; address += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
        const auto descriptor = At<IMAGE_IMPORT_DESCRIPTOR>(address);
        if (descriptor.Name == 0) return imports;
        std::string module = TextAt(descriptor.Name);
        for (char& c : module) {
            if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
        }
        imports[module] = ImportedFrom(descriptor.OriginalFirstThunk);
    }
}
