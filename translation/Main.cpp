/* orvande-translation: the command line. */
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <string_view>
#include <vector>

#include "Commands.h"
#include "LMOnlineVersion.h"
#include "files/Complaint.h"

namespace {

constexpr int cannot = 2;

constexpr const char* usage =
    "Helps to translate the texts of Orvande Online.\n"
    "\n"
    "  orvande-translation template [--language NAME] [--output FILE]\n"
    "                                            all texts of this version, to be translated\n"
    "  orvande-translation check FILE...         tells what is wrong with translations\n"
    "  orvande-translation convert IN OUT        into another form\n"
    "  orvande-translation merge OLD NEW [--output FILE]\n"
    "                                            the texts of NEW with the translations of both\n"
    "  orvande-translation pseudo [--output FILE]\n"
    "                                            a language that shows what was forgotten\n"
    "\n"
    "The name of a file tells its form: .txt is a language file, which the library reads, .tsv a table in\n"
    "UTF-8, .po and .pot are gettext's. Without --output, a language file goes to the standard output.\n"
    "Exit code: 1 a file has mistakes, 2 wrong arguments, or a file cannot be read or written.\n";

struct Command {
    std::string_view name;
    int (*run)(Arguments arguments);
};

constexpr Command commands[] = {
    {"check", RunCheck},   {"convert", RunConvert},   {"merge", RunMerge},
    {"pseudo", RunPseudo}, {"template", RunTemplate},
};

/* Behind "--" all are files. */
bool IsForHelp(Arguments arguments) {
    const auto end = std::ranges::find(arguments, "--");
    return std::any_of(arguments.begin(), end,
                       [](const std::string& argument) { return argument == "--help" || argument == "-h"; });
}

int Run(Arguments arguments) {
    if (arguments.empty()) throw UsageError("a command is missing (--help tells them)");
    if (IsForHelp(arguments)) {
        std::fputs(usage, stdout);
        return 0;
    }
    const std::string& name = arguments.front();
    if (name == "--version") {
        std::printf("orvande-translation %d.%d.%d\n", LM_ONLINE_VERSION_MAJOR, LM_ONLINE_VERSION_MINOR,
                    LM_ONLINE_VERSION_PATCH);
        return 0;
    }
    const auto* const command = std::ranges::find(commands, name, &Command::name);
    if (command == std::end(commands))
        throw UsageError("there is no command '" + name + "' (--help tells them)");
    return command->run(arguments.subspan(1));
}

}  // namespace

int main(int argc, char** argv) {
    // A file that may not grow any more is told as every other that cannot be written.
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        const std::vector<std::string> arguments(argv + 1, argv + std::max(argc, 1));
        const int code = Run(arguments);
        if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
            throw UsageError("'standard output' cannot be written");
        return code;
    } catch (const std::exception& error) {
        PrintFailure(error);
        return cannot;
    }
}
