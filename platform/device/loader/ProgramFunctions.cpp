#include "ProgramFunctions.h"

#include <cstring>
#include <map>
#include <memory>
#include <string>

#include "Console.h"
#include "Device.h"
#include "DeviceArguments.h"
#include "LoadedImage.h"
#include "machine/Call.h"
#include "machine/Text.h"

namespace {

/* The library that a program has loaded, and how often. */
struct Loaded {
    std::unique_ptr<LoadedImage> image;
    size_t references = 0;
};

Loaded& Current() {
    static auto& loaded = *new Loaded;
    return loaded;
}

}  // namespace

HMODULE WINAPI LoadImageAtPath(LPCWSTR path) {
    const Device& device = Device::Current();
    if (path == nullptr || !device.Exists(path)) return LoadLibraryW(path);
    Loaded& loaded = Current();
    if (loaded.references == 0) loaded.image = LoadedImage::Load(device.HostPath(path));
    if (loaded.image == nullptr) {
        SetLastError(ERROR_BAD_EXE_FORMAT);
        return nullptr;
    }
    ++loaded.references;
    return device.LibraryInstance();
}

BOOL WINAPI FreeImage(HMODULE module) {
    Loaded& loaded = Current();
    if (module != Device::Current().LibraryInstance() || loaded.references == 0) return FreeLibrary(module);
    if (--loaded.references == 0) loaded.image.reset();
    return TRUE;
}

void* WINAPI FindExport(HMODULE module, const char* name) {
    const Loaded& loaded = Current();
    const bool isLoaded = module == Device::Current().LibraryInstance() && loaded.references != 0;
    void* const function = isLoaded ? loaded.image->Export(name) : nullptr;
    if (function == nullptr) SetLastError(ERROR_PROC_NOT_FOUND);
    return function;
}

FILE* StandardStream(int number) {
    return Console::Current().Stream(number);
}

int PutLine(const char* text) {
    return std::fprintf(StandardStream(1), "%s\n", text);
}

int PutByte(int letter) {
    return std::fputc(letter, StandardStream(1));
}

int PrintFormatted(const char* format, ...) {
    va_list values;
    va_start(values, format);
    const DeviceArguments arguments(format, values);
    va_end(values);
    return std::vfprintf(StandardStream(1), format, arguments.List());
}

int FormatWide(WCHAR* buffer, size_t count, const WCHAR* format, va_list values) {
    const DeviceArguments arguments(format, values);
    return _vsnwprintf(buffer, count, format, arguments.List());
}

double NumberAt(const WCHAR* text, WCHAR** end) {
    std::string narrow;
    for (const WCHAR* unit = text; *unit > 0 && *unit < 0x7F; ++unit)
        narrow += static_cast<char>(*unit);
    char* narrowEnd = nullptr;
    const double value = std::strtod(narrow.c_str(), &narrowEnd);
    if (end != nullptr) *end = const_cast<WCHAR*>(text) + (narrowEnd - narrow.c_str());
    return value;
}

int WINAPI WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR text, int length, LPSTR bytes, int size,
                               LPCSTR substitute, LPBOOL wasSubstituted) {
    simulator::Call call("WideCharToMultiByte");
    if (codePage != CP_UTF8 || flags != 0 || length < -1 || substitute != nullptr ||
        wasSubstituted != nullptr) {
        call.Violates("this conversion is not simulated");
        return 0;
    }
    // -1: up to the terminator, and with it.
    const size_t units = length < 0 ? std::char_traits<WCHAR>::length(text) + 1 : static_cast<size_t>(length);
    const std::string converted = simulator::ToUtf8({text, units});
    const auto count = static_cast<int>(converted.size());
    if (size == 0) return count;
    if (size < count) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    std::memcpy(bytes, converted.data(), converted.size());
    return count;
}
