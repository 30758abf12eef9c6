#include "Platform.h"

#include "Imports.h"

#include <cmath>
#include <map>
#include <type_traits>
#include <utility>

#include "DeviceHeap.h"
#include "ProgramFunctions.h"

namespace device {

/* Here a name means what an image means by it: a function of the simulated handheld or of the host's own
 * runtime, but for these. */
namespace {

constexpr auto malloc = DeviceMalloc;
constexpr auto calloc = DeviceCalloc;
constexpr auto realloc = DeviceRealloc;
constexpr auto free = DeviceFree;

constexpr auto FreeLibrary = FreeImage;
constexpr auto GetProcAddressA = FindExport;
constexpr auto LoadLibraryW = LoadImageAtPath;
constexpr auto _getstdfilex = StandardStream;
constexpr auto _vsnwprintf = FormatWide;
constexpr auto printf = PrintFormatted;
constexpr auto putchar = PutByte;
constexpr auto puts = PutLine;
constexpr auto wcstod = NumberAt;

// Of several functions of one name, the one for the device's types.
constexpr double (*floor)(double) = std::floor;
constexpr const void* (*memchr)(const void*, int, size_t) = ::memchr;
constexpr int (*swscanf)(const WCHAR*, const WCHAR*, ...) = ::swscanf;
constexpr size_t (*wcslen)(const WCHAR*) = ::wcslen;

/* What a pointer, however long the way, leads to. */
template <class Type>
struct End {
    using type = Type;
};
template <class Type>
struct End<Type*> : End<std::remove_cv_t<Type>> {};

template <class... Types>
constexpr bool haveWideTextOfHost = (std::is_same_v<typename End<Types>::type, wchar_t> || ...);

template <class Result, class... Arguments>
void* Address(Result (*function)(Arguments...)) {
    static_assert(!haveWideTextOfHost<Result, Arguments...>, "its characters have 4 bytes");
    return reinterpret_cast<void*>(function);
}

template <class Result, class... Arguments>
void* Address(Result (*function)(Arguments..., ...)) {
    static_assert(!haveWideTextOfHost<Result, Arguments...>, "its characters have 4 bytes");
    return reinterpret_cast<void*>(function);
}

// Only a macro can make a text out of a name.
#define IMPORT(library, name, function) {{#library, name}, Address(function)},

const std::map<std::pair<std::string_view, std::string_view>, void*>& Imports() {
    static const std::map<std::pair<std::string_view, std::string_view>, void*> imports = {
#include "ImportTable.inc"
    };
    return imports;
}

}  // namespace
}  // namespace device

void* FindImport(std::string_view library, std::string_view function) {
    const auto found = device::Imports().find({library, function});
    return found != device::Imports().end() ? found->second : nullptr;
}
