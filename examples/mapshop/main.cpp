/* A console program that uses the online library as an application would. */
#include <string>
#include <vector>

#include "Console.h"
#include "SearchCommand.h"

namespace {

constexpr wchar_t usage[] =
    L"Usage: mapshop search [SOUTH WEST NORTH EAST]...\n"
    L"\n"
    L"Lists the maps of the map shop that meet any of the boxes, or all maps when no box is given. The edges "
    L"of\n"
    L"a box are decimal numbers in degrees: south and north from -90 to 90, west and east from -180 to 180. "
    L"A box\n"
    L"whose west is greater than its east crosses the 180th meridian.\n"
    L"\n"
    L"Example: mapshop search 45.8 5.9 47.9 10.5\n"
    L"\n"
    L"Exit code: 0 the service answered; 1 it did not; 2 wrong arguments; 3 the online library cannot be "
    L"used.";

ExitCode Run(const std::vector<std::wstring>& arguments) {
    if (arguments.empty()) {
        PrintError(L"No command is given; see mapshop --help.");
        return exitUsage;
    }
    for (const std::wstring& argument : arguments) {
        if (argument != L"--help" && argument != L"-h") continue;
        PrintLine(usage);
        return exitDone;
    }
    if (arguments[0] == L"search") return RunSearch({arguments.begin() + 1, arguments.end()});
    PrintError(L"There is no command '" + arguments[0] + L"'; see mapshop --help.");
    return exitUsage;
}

}  // namespace

extern "C" int wmain(int count, wchar_t** values) {
    const Utf8Console console;
    return Run({values + (count > 0 ? 1 : 0), values + count});
}
