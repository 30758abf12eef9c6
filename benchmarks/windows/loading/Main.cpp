/* Loads and unloads DLLs, and looks at what that takes.
 *
 *   benchmark-loading time ROUNDS CYCLES DLL ...   prints a line for each round: the nanoseconds that one
 *                                                  load and unload of each DLL took, of so many in a row
 *   benchmark-loading memory CYCLES DLL            prints the bytes and blocks that it has on the heaps while
 *                                                  it is loaded, and the bytes, blocks and handles that so
 *                                                  many loads and unloads have left
 *
 * What the DLLs import is kept loaded meanwhile. The exit code is 1, after one sentence, when one cannot be
 * loaded. */
#include "Platform.h"

#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include "HeapUse.h"
#include "helpers/OpenHandles.h"

namespace {

using Text = std::wstring;

void LoadAndUnload(const Text& file) {
    const HMODULE module = LoadLibraryW(file.c_str());
    if (module == nullptr) throw std::runtime_error("a DLL cannot be loaded");
    FreeLibrary(module);
}

/* Loads what the DLL imports, for good. */
void KeepImports(const Text& file) {
    const HMODULE module = LoadLibraryW(file.c_str());
    if (module == nullptr) throw std::runtime_error("a DLL cannot be loaded");
    const auto* const base = reinterpret_cast<const BYTE*>(module);
    const auto* const dosHeader = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dosHeader->e_lfanew);
    const DWORD table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table); import->Name != 0;
         ++import) {
        LoadLibraryA(reinterpret_cast<const char*>(base + import->Name));
    }
    FreeLibrary(module);
}

void MeasureTime(long rounds, long cycles, const std::vector<Text>& files) {
    for (const Text& file : files)
        KeepImports(file);
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    for (long round = 0; round < rounds; ++round) {
        for (const Text& file : files) {
            LARGE_INTEGER begin;
            LARGE_INTEGER end;
            QueryPerformanceCounter(&begin);
            for (long i = 0; i < cycles; ++i)
                LoadAndUnload(file);
            QueryPerformanceCounter(&end);
            printf("%.0f ", static_cast<double>(end.QuadPart - begin.QuadPart) * 1e9 /
                                static_cast<double>(frequency.QuadPart) / static_cast<double>(cycles));
        }
        printf("\n");
    }
}

long Growth(size_t before, size_t after) {
    return static_cast<long>(after) - static_cast<long>(before);
}

/* The first loads make what the system makes once. */
void MeasureMemory(long cycles, const Text& file) {
    KeepImports(file);
    for (int i = 0; i < 10; ++i)
        LoadAndUnload(file);
    OpenHandles();
    const size_t handles = OpenHandles();
    const HeapUse before = UseOfAllHeaps();
    const HMODULE module = LoadLibraryW(file.c_str());
    const HeapUse loaded = UseOfAllHeaps();
    FreeLibrary(module);
    const HeapUse unloaded = UseOfAllHeaps();
    for (long i = 0; i < cycles; ++i)
        LoadAndUnload(file);
    const HeapUse after = UseOfAllHeaps();
    printf("loaded %ld %ld\n", Growth(before.bytes, loaded.bytes), Growth(before.blocks, loaded.blocks));
    printf("left %ld %ld %ld\n", Growth(unloaded.bytes, after.bytes), Growth(unloaded.blocks, after.blocks),
           Growth(handles, OpenHandles()));
}

void Run(const std::vector<Text>& arguments) {
    if (arguments.size() >= 4 && arguments[0] == L"time") {
        MeasureTime(std::stol(arguments[1]), std::stol(arguments[2]),
                    {arguments.begin() + 3, arguments.end()});
    } else if (arguments.size() == 3 && arguments[0] == L"memory") {
        MeasureMemory(std::stol(arguments[1]), arguments[2]);
    } else {
        throw std::runtime_error("there are arguments missing");
    }
}

}  // namespace

int wmain(int count, WCHAR** arguments) {
    try {
        Run({arguments + 1, arguments + count});
        return 0;
    } catch (const std::exception& error) {
        fprintf(stderr, "benchmark-loading: %s\n", error.what());
        return 1;
    }
}
