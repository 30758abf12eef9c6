#include "Console.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "Utf8.h"

namespace {

HANDLE HandleOf(Output output) {
    return GetStdHandle(output == Output::standard ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

size_t ConsoleWidth(Output output) {
    CONSOLE_SCREEN_BUFFER_INFO info;
    if (!GetConsoleScreenBufferInfo(HandleOf(output), &info)) return 0;
    // Some consoles put an empty line after a line that fills their width.
    return static_cast<size_t>(std::max(info.srWindow.Right - info.srWindow.Left, 0));
}

size_t ColumnsOfEnvironment() {
    const wchar_t* const columns = _wgetenv(L"COLUMNS");
    return columns == nullptr ? 0 : wcstoul(columns, nullptr, 10);
}

}  // namespace

Utf8Console::Utf8Console() : codePage(GetConsoleOutputCP()) {
    SetConsoleOutputCP(CP_UTF8);
}

Utf8Console::~Utf8Console() {
    SetConsoleOutputCP(codePage);
}

void PrintLine(std::wstring_view text) {
    std::puts(Utf8Of(text).c_str());
}

void PrintError(std::wstring_view text) {
    std::fprintf(stderr, "mapshop: %s\n", Utf8Of(text).c_str());
}

void PrintProgress(std::wstring_view text) {
    std::fputs(Utf8Of(text).c_str(), stderr);
    // Some runtimes buffer the error output when it does not go to a console.
    std::fflush(stderr);
}

bool ErrorsAreOnConsole() {
    DWORD mode = 0;
    return GetConsoleMode(HandleOf(Output::errors), &mode) != FALSE;
}

size_t LineWidth(Output output) {
    constexpr size_t fallback = 100;
    constexpr size_t least = 40;
    constexpr size_t most = 1000;
    for (const size_t width : {ConsoleWidth(output), ColumnsOfEnvironment()}) {
        if (width != 0) return std::clamp(width, least, most);
    }
    return fallback;
}
