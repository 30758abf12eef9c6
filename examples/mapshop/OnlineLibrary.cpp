#include "OnlineLibrary.h"

#include "NumberText.h"
#include "SystemTexts.h"

namespace {

constexpr wchar_t libraryName[] = L"OrvandeOnline.dll";

std::wstring ProgramFolder() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) return path.substr(0, path.find_last_of(L'\\', length) + 1);
        path.resize(path.size() * 2);
    }
}

std::wstring LoadProblem(const std::wstring& path, DWORD error) {
    if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) {
        return std::wstring(libraryName) + L" is missing: it belongs beside this program, as " + path + L".";
    }
    if (error == ERROR_MOD_NOT_FOUND) {
        return path + std::wstring(MissingPartProblem());
    }
    return path + L" cannot be loaded (Windows error " + DecimalText(error) + L").";
}

std::wstring WidenedName(const char* name) {
    return {name, name + strlen(name)};
}

}  // namespace

OnlineLibrary::OnlineLibrary()
    : path(ProgramFolder() + libraryName),
      module(LoadLibraryW(path.c_str())),
      problem(module == nullptr ? LoadProblem(path, GetLastError()) : L"") {}

OnlineLibrary::~OnlineLibrary() {
    if (module != nullptr) FreeLibrary(module);
}

OnlineLibrary::Address OnlineLibrary::Find(const char* name) {
    if (!problem.empty()) return {nullptr};
    const FARPROC address = GetProcAddress(module, name);
    if (address == nullptr) {
        problem =
            path + L" has no function " + WidenedName(name) + L": it is another library, or another version.";
    }
    return {address};
}
