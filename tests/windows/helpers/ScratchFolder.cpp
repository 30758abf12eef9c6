#include "helpers/ScratchFolder.h"

#include "Platform.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
    static int count = 0;
    const std::wstring name =
        L"orvande-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
    path = (fs::temp_directory_path() / name).wstring();
    // What a process of the same number left behind is not part of the test.
    fs::remove_all(path);
    fs::create_directory(path);
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path, ignored);
}

std::vector<std::wstring> ScratchFolder::Names() const {
    std::vector<std::wstring> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(path))
        names.push_back(entry.path().filename().wstring());
    std::sort(names.begin(), names.end());
    return names;
}
