#include "Platform.h"

#include "Program.h"

#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "Console.h"
#include "Device.h"
#include "DeviceHeap.h"
#include "ImageResources.h"
#include "Imports.h"
#include "LoadedImage.h"
#include "ProgramFunctions.h"
#include "machine/Allocations.h"
#include "machine/Violations.h"

namespace {

using Entry = int WINAPI(HINSTANCE instance, HINSTANCE previous, LPWSTR commandLine, int show);

/* Where TerminateProcess goes back to, while a program runs. */
jmp_buf* endOfProgram = nullptr;
DWORD exitCode = 0;

/* A library that programs may be bound to. Of one that is, the module: it is loaded before the program starts
 * and unloaded after its end. */
struct BoundLibrary {
    std::string_view name;
    const WCHAR* path;
    HMODULE module;
};

BoundLibrary boundLibraries[] = {
    {"ORVANDEONLINE", TEXT("\\Program Files\\App\\OrvandeOnline.dll"), nullptr},
    {"ORVANDEACCOUNT", TEXT("\\Program Files\\App\\OrvandeAccount.dll"), nullptr},
};

void* FindProgramImport(std::string_view library, std::string_view function) {
    for (BoundLibrary& bound : boundLibraries) {
        if (bound.name != library) continue;
        if (bound.module == nullptr) bound.module = LoadImageAtPath(bound.path);
        return FindExport(bound.module, std::string(function).c_str());
    }
    return FindImport(library, function);
}

void Unbind() {
    for (BoundLibrary& bound : boundLibraries) {
        if (bound.module != nullptr) FreeImage(bound.module);
        bound.module = nullptr;
    }
}

/* Null, and a violation, when the file is no program. */
std::unique_ptr<MappedImage> Map(const std::string& file) {
    const simulator::OwnWork ownWork;
    try {
        auto program = std::make_unique<MappedImage>(file, NextBase(), FindProgramImport);
        Device& device = Device::Current();
        device.SetResources(device.ProgramInstance(), ResourcesOf(*program));
        return program;
    } catch (const ImageError& error) {
        simulator::Violate(file + " cannot be started: " + error.what());
        return nullptr;
    }
}

/* A program may write to its command line. */
std::u16string CopyOf(std::u16string_view text) {
    const simulator::OwnWork ownWork;
    return std::u16string(text);
}

void Call(const MappedImage& program, LPWSTR commandLine) {
    jmp_buf end;
    endOfProgram = &end;
    if (setjmp(end) == 0) {
        reinterpret_cast<Entry*>(program.Entry())(Device::Current().ProgramInstance(), nullptr, commandLine,
                                                  SW_SHOW);
        simulator::Violate("the program has returned from its start");
    }
    endOfProgram = nullptr;
}

}  // namespace

ProgramResult RunProgram(const std::string& file, std::u16string_view commandLine) {
    constexpr uint32_t notStarted = 0xFFFFFFFF;
    const size_t blocks = DeviceHeapBlocks();
    std::unique_ptr<MappedImage> program = Map(file);
    if (program == nullptr) return {notStarted, {}, {}};
    Console::Current().Clear();
    Call(*program, CopyOf(commandLine).data());
    Unbind();
    CheckHeap(blocks);
    const simulator::OwnWork ownWork;
    return {exitCode, Console::Current().Output(), Console::Current().Errors()};
}

BOOL WINAPI TerminateProcess(HANDLE process, DWORD code) {
    if (process != reinterpret_cast<HANDLE>(uintptr_t{66}))
        simulator::Violate("TerminateProcess of another process");
    if (endOfProgram == nullptr) {
        // The device would end the test program here.
        std::fprintf(stderr, "the image ended its process with the code %lu\n", code);
        std::abort();
    }
    exitCode = code;
    longjmp(*endOfProgram, 1);
}
