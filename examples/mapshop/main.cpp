/* A console program that uses the online library as an application would. */
#include <string>
#include <vector>

#include "Console.h"
#include "DownloadCommand.h"
#include "RangeCommand.h"
#include "SearchCommand.h"
#include "SystemTexts.h"

namespace {

constexpr wchar_t usageBegin[] =
    LR"(Usage: mapshop search [SOUTH WEST NORTH EAST]...
       mapshop download PATH FILE
       mapshop range PATH OFFSET LENGTH [FILE]

search lists the maps of the map shop that meet any of the boxes, or all maps when no box is given. The edges
of a box are decimal numbers in degrees: south and north from -90 to 90, west and east from -180 to 180. A box
whose west is greater than its east crosses the 180th meridian.

download fetches PATH, as the search lists it, into FILE, and shows how far it is. It grows as FILE.TMP. An
older FILE is deleted when the host begins to send the new one.)";

constexpr wchar_t usageMiddle[] =
    LR"(

range reads LENGTH bytes of PATH (1 to 2147483647) from byte OFFSET on and prints them in hexadecimal, or
saves them as FILE. A host that does not know ranges sends the file's first bytes, which cannot be told apart.

Options of download and range:
  --host NAME           the web host ()" MAPSHOP_DEFAULT_HOST LR"( without it)
  --progress bar|lines  one line that is renewed, or a few lines (bar where the error output is a console)

Examples: mapshop search 45.8 5.9 47.9 10.5
          mapshop download /maps/corsica.map )";

constexpr wchar_t usageEnd[] =
    LR"(
          mapshop range /maps/corsica.map 4096 64

Exit code: 0 done, or the service answered a search; 1 no answer, a refusal, or a transfer that broke off;
2 wrong arguments; 3 the online library cannot be used; 4 FILE cannot be written; 5 cancelled.)";

std::wstring Usage() {
    std::wstring usage = usageBegin;
    usage.append(DownloadHelp()).append(usageMiddle).append(ExampleFile()).append(usageEnd);
    return usage;
}

ExitCode Run(const std::vector<std::wstring>& arguments) {
    if (arguments.empty()) {
        PrintError(L"No command is given; see mapshop --help.");
        return exitUsage;
    }
    for (const std::wstring& argument : arguments) {
        if (argument != L"--help" && argument != L"-h") continue;
        PrintLine(Usage());
        return exitDone;
    }
    const std::vector<std::wstring> rest{arguments.begin() + 1, arguments.end()};
    if (arguments[0] == L"search") return RunSearch(rest);
    if (arguments[0] == L"download") return RunDownload(rest);
    if (arguments[0] == L"range") return RunRange(rest);
    PrintError(L"There is no command '" + arguments[0] + L"'; see mapshop --help.");
    return exitUsage;
}

}  // namespace

extern "C" int wmain(int count, wchar_t** values) {
    const Utf8Console console;
    return Run({values + (count > 0 ? 1 : 0), values + count});
}
