#include "Platform.h"

#include "Imports.h"

#include <cmath>
#include <map>
#include <string>

#include "DeviceHeap.h"
#include "ProgramFunctions.h"

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
        FUNCTION(CreateDirectoryW),
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

/* Windows and dialogs. */
void AddWindows(Functions& functions) {
    functions.insert({
        FUNCTION(CallWindowProcW), FUNCTION(CreateWindowExW), FUNCTION(DefDlgProcW),
        FUNCTION(DefWindowProcW),  FUNCTION(DestroyWindow),   FUNCTION(DialogBoxIndirectParamW),
        FUNCTION(EnableWindow),    FUNCTION(EndDialog),       FUNCTION(GetClientRect),
        FUNCTION(GetDlgCtrlID),    FUNCTION(GetDlgItem),      FUNCTION(GetDlgItemTextW),
        FUNCTION(GetFocus),        FUNCTION(GetParent),       FUNCTION(GetWindow),
        FUNCTION(GetWindowLongW),  FUNCTION(GetWindowRect),   FUNCTION(GetWindowTextLengthW),
        FUNCTION(GetWindowTextW),  FUNCTION(IsWindow),        FUNCTION(IsWindowEnabled),
        FUNCTION(IsWindowVisible), FUNCTION(PostMessageW),    FUNCTION(SendDlgItemMessageW),
        FUNCTION(SendMessageW),    FUNCTION(SetDlgItemTextW), FUNCTION(SetFocus),
        FUNCTION(SetWindowLongW),  FUNCTION(SetWindowTextW),  FUNCTION(ShowWindow),
    });
}

/* Menus, resources, other programs. */
void AddMenusAndResources(Functions& functions) {
    functions.insert({
        FUNCTION(AppendMenuW),
        FUNCTION(CreateMenu),
        FUNCTION(CreatePopupMenu),
        FUNCTION(DestroyMenu),
        FUNCTION(FindResourceW),
        FUNCTION(GetMenuItemInfoW),
        FUNCTION(GetSubMenu),
        FUNCTION(LoadResource),
        FUNCTION(LoadStringW),
        FUNCTION(SetMenuItemInfoW),
        FUNCTION(SizeofResource),
        FUNCTION(WaitForSingleObject),
        {"ShellExecuteEx", Address(&ShellExecuteExW)},
    });
}

/* What only programs call. */
void AddProgramFunctions(Functions& functions) {
    functions.insert({
        {"_getstdfilex", Address(&StandardStream)},
        {"FreeLibrary", Address(&FreeImage)},
        {"GetProcAddressA", Address(&FindExport)},
        {"LoadLibraryW", Address(&LoadImageAtPath)},
        {"puts", Address(&PutLine)},
        {"wcstod", Address(&NumberAt)},
        FUNCTION(fputs),
        FUNCTION(GetTickCount),
        FUNCTION(TerminateProcess),
        FUNCTION(WideCharToMultiByte),
        {"floor", Address<double, double>(&std::floor)},
    });
}

Functions Coredll() {
    Functions functions;
    AddRuntime(functions);
    AddWideRuntime(functions);
    AddSystem(functions);
    AddWindows(functions);
    AddMenusAndResources(functions);
    AddProgramFunctions(functions);
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
    return {
        {"#9", Address(&SHInitExtraControls)},
        {"#34", Address(&SHCreateMenuBar)},
        {"#56", Address(&SHInitDialog)},
        {"#97", Address(&SHSendBackToFocusWindow)},
    };
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
