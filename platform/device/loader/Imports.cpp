#include "Platform.h"

#include "Imports.h"

#include <cstdlib>
#include <map>
#include <string>

#include "DeviceHeap.h"

namespace {

using Functions = std::map<std::string_view, void*>;

template <class Result, class... Arguments>
void* Address(Result (*function)(Arguments...)) {
    return reinterpret_cast<void*>(function);
}

template <class Result, class... Arguments>
void* Address(Result (*function)(Arguments..., ...)) {
    return reinterpret_cast<void*>(function);
}

// Only a macro can make a name out of a function.
#define FUNCTION(name) \
    { #name, Address(&(name)) }

/* The C runtime, where the host's own does the same. */
void AddRuntime(Functions& functions) {
    functions.insert({
        {"malloc", Address(DeviceMalloc)},
        {"calloc", Address(DeviceCalloc)},
        {"realloc", Address(DeviceRealloc)},
        {"free", Address(DeviceFree)},
        FUNCTION(memcpy),
        FUNCTION(memmove),
        FUNCTION(memset),
        FUNCTION(memcmp),
        {"memchr", Address<const void*, const void*, int, size_t>(&memchr)},
        FUNCTION(strlen),
        FUNCTION(strcmp),
        FUNCTION(strncmp),
        FUNCTION(fclose),
        FUNCTION(feof),
        FUNCTION(ferror),
        FUNCTION(fflush),
        FUNCTION(fgetc),
        FUNCTION(fputc),
        FUNCTION(fread),
        FUNCTION(fseek),
        FUNCTION(ftell),
        FUNCTION(fwrite),
    });
}

/* The C runtime, where text is wide. */
void AddWideRuntime(Functions& functions) {
    functions.insert({
        FUNCTION(_vsnwprintf),
        FUNCTION(_wfopen),
        {"fwprintf", reinterpret_cast<void*>(static_cast<int (*)(FILE*, const WCHAR*, ...)>(&fwprintf))},
        {"swscanf", reinterpret_cast<void*>(static_cast<int (*)(const WCHAR*, const WCHAR*, ...)>(&swscanf))},
        {"wcslen", Address<size_t, const WCHAR*>(&wcslen)},
        {"wcsncpy", Address<WCHAR*, WCHAR*, const WCHAR*, size_t>(&wcsncpy)},
    });
}

void AddSystem(Functions& functions) {
    functions.insert({
        FUNCTION(CloseHandle),
        FUNCTION(CreateFileW),
        FUNCTION(DeleteFileW),
        FUNCTION(GetFileAttributesW),
        FUNCTION(GetLastError),
        FUNCTION(GetModuleFileNameW),
        FUNCTION(GetModuleHandleW),
        FUNCTION(LoadCursorW),
        FUNCTION(MessageBoxW),
        FUNCTION(MoveFileW),
        FUNCTION(RegCloseKey),
        FUNCTION(RegOpenKeyExW),
        FUNCTION(RegQueryValueExW),
        FUNCTION(SetCursor),
        FUNCTION(SetLastError),
        {"SHGetSpecialFolderPath", Address(&SHGetSpecialFolderPathW)},
        FUNCTION(WriteFile),
    });
}

/* Ends the test program: what an image does when it cannot go on. */
BOOL WINAPI EndProcess(HANDLE /*process*/, UINT exitCode) {
    std::fprintf(stderr, "the image ended its process with the code %u\n", exitCode);
    std::abort();
}

Functions Coredll() {
    Functions functions;
    AddRuntime(functions);
    AddWideRuntime(functions);
    AddSystem(functions);
    functions.emplace("TerminateProcess", Address(&EndProcess));
    return functions;
}

Functions Wininet() {
    return {
        FUNCTION(HttpOpenRequestW), FUNCTION(HttpQueryInfoW),      FUNCTION(HttpSendRequestW),
        FUNCTION(InternetConnectW), FUNCTION(InternetCloseHandle), FUNCTION(InternetOpenW),
        FUNCTION(InternetReadFile),
    };
}

Functions Cellcore() {
    return {
        FUNCTION(ConnMgrEstablishConnectionSync),
        FUNCTION(ConnMgrMapURL),
        FUNCTION(ConnMgrReleaseConnection),
    };
}

Functions Aygshell() {
    return {{"#9", Address(&SHInitExtraControls)}};
}

}  // namespace

void* FindImport(std::string_view library, std::string_view function) {
    static const std::map<std::string_view, Functions> libraries = {
        {"COREDLL", Coredll()},
        {"WININET", Wininet()},
        {"CELLCORE", Cellcore()},
        {"AYGSHELL", Aygshell()},
    };
    const auto functions = libraries.find(library);
    if (functions == libraries.end()) return nullptr;
    const auto found = functions->second.find(function);
    return found != functions->second.end() ? found->second : nullptr;
}
