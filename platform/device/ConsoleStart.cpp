/* The start of a program that takes arguments: Windows CE hands them over as one text. */
#include "Platform.h"

#include <string>
#include <vector>

extern "C" int wmain(int count, wchar_t** values);

namespace {

constexpr std::wstring_view gaps = L" \t";

/* The next argument, which is taken off `rest`: it ends at a gap that is not between quotation marks, which
 * are left out. */
std::wstring TakeArgument(std::wstring_view& rest) {
    std::wstring argument;
    bool isQuoted = false;
    size_t i = 0;
    for (; i < rest.size(); ++i) {
        if (rest[i] == L'"')
            isQuoted = !isQuoted;
        else if (!isQuoted && gaps.find(rest[i]) != std::wstring_view::npos)
            break;
        else
            argument += rest[i];
    }
    rest.remove_prefix(i);
    return argument;
}

std::wstring ProgramPath() {
    wchar_t path[MAX_PATH];
    return {path, GetModuleFileNameW(nullptr, path, MAX_PATH)};
}

void SkipGap(std::wstring_view& rest) {
    while (!rest.empty() && gaps.find(rest.front()) != std::wstring_view::npos)
        rest.remove_prefix(1);
}

std::vector<std::wstring> ArgumentsOf(std::wstring_view commandLine) {
    std::vector<std::wstring> arguments{ProgramPath()};
    for (SkipGap(commandLine); !commandLine.empty(); SkipGap(commandLine))
        arguments.push_back(TakeArgument(commandLine));
    return arguments;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPWSTR commandLine, int /*show*/) {
    std::vector<std::wstring> arguments = ArgumentsOf(commandLine != nullptr ? commandLine : L"");
    std::vector<wchar_t*> values;
    for (std::wstring& argument : arguments)
        values.push_back(argument.data());
    values.push_back(nullptr);
    return wmain(static_cast<int>(arguments.size()), values.data());
}
