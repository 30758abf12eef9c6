#include "helpers/ReplacedImport.h"

#include <cstring>
#include <stdexcept>
#include <string>

namespace {

class MappedFile {
public:
    explicit MappedFile(HMODULE module) : base(reinterpret_cast<BYTE*>(module)) {}

    template <class Structure>
    Structure* At(DWORD offset) const {
        return static_cast<Structure*>(static_cast<void*>(base + offset));
    }

    IMAGE_IMPORT_DESCRIPTOR* Imports() const {
        const auto offset = static_cast<DWORD>(At<IMAGE_DOS_HEADER>(0)->e_lfanew);
        const IMAGE_OPTIONAL_HEADER& header = At<IMAGE_NT_HEADERS>(offset)->OptionalHeader;
        return At<IMAGE_IMPORT_DESCRIPTOR>(header.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
    }

private:
    BYTE* const base;
};

ULONG_PTR* FindSlot(const MappedFile& file, const char* name) {
    for (auto* library = file.Imports(); library->Name != 0; ++library) {
        const auto* entry = file.At<IMAGE_THUNK_DATA>(library->OriginalFirstThunk);
        auto* slot = file.At<ULONG_PTR>(library->FirstThunk);
        for (; entry->u1.AddressOfData != 0; ++entry, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(entry->u1.Ordinal)) continue;
            const auto* const function = file.At<IMAGE_IMPORT_BY_NAME>(entry->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(function->Name), name) == 0) return slot;
        }
    }
    throw std::runtime_error(std::string(name) + " is not imported");
}

}  // namespace

ReplacedImport::ReplacedImport(HMODULE module, const char* name, void (*replacement)())
    : slot(FindSlot(MappedFile(module), name)), original(*slot) {
    Write(reinterpret_cast<ULONG_PTR>(replacement));
}

void ReplacedImport::Write(ULONG_PTR address) const {
    DWORD before = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &before);
    *slot = address;
    VirtualProtect(slot, sizeof *slot, before, &before);
}
