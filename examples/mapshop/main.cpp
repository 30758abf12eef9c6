/* A console program that uses the online library as an application would. */
#include "Commands.h"
#include "Console.h"
#include "LMOnlineVersion.h"

namespace {

constexpr wchar_t options[] =
    LR"(Options of download and range:
  --host NAME           the web host ()" MAPSHOP_DEFAULT_HOST LR"( without it)
  --progress bar|lines  one line that is renewed, or a few lines (bar where the error output is a console)
  --resume              download goes on where it broke off)";

constexpr wchar_t exitCodes[] =
    LR"(
Exit code: 0 done, or the service answered a search; 1 no answer, a refusal, or a transfer that broke off;
2 wrong arguments; 3 the online library cannot be used; 4 FILE cannot be written; 5 cancelled.)";

/* A line for each command; `title` stands before the first one. */
std::wstring Lines(const std::wstring& title, std::wstring (*argumentsOf)(const Command&)) {
    std::wstring lines;
    for (const Command* command : commands) {
        lines += lines.empty() ? title : L"\n" + std::wstring(title.size(), L' ');
        lines += L"mapshop " + std::wstring(command->name);
        const std::wstring arguments = argumentsOf(*command);
        if (!arguments.empty()) lines += L" " + arguments;
    }
    return lines;
}

std::wstring Usage() {
    std::wstring usage =
        Lines(L"Usage: ", [](const Command& command) { return std::wstring(command.arguments); });
    usage += L"\n       mapshop --version";
    for (const Command* command : commands)
        usage += L"\n" + command->help();
    return usage + L"\n\n" + options + L"\n\n" +
           Lines(L"Examples: ", [](const Command& command) { return command.example(); }) + L"\n" + exitCodes;
}

std::wstring Version() {
    std::string version = "mapshop";
    char separator = ' ';
    for (const int part : {LM_ONLINE_VERSION_MAJOR, LM_ONLINE_VERSION_MINOR, LM_ONLINE_VERSION_PATCH}) {
        version += separator + std::to_string(part);
        separator = '.';
    }
    return {version.begin(), version.end()};
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
    if (arguments[0] == L"--version") {
        PrintLine(Version());
        return exitDone;
    }
    for (const Command* command : commands) {
        if (arguments[0] == command->name) return command->run({arguments.begin() + 1, arguments.end()});
    }
    PrintError(L"There is no command '" + arguments[0] + L"'; see mapshop --help.");
    return exitUsage;
}

}  // namespace

extern "C" int wmain(int count, wchar_t** values) {
    const Utf8Console console;
    return Run({values + (count > 0 ? 1 : 0), values + count});
}
