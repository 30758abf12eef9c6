/* Command lines of the program for translators, with files of any bytes: arguments, each ended by a zero
 * byte; after an empty one, which file is there (a byte), and what is in it. All of it happens in a folder
 * that the arguments cannot lead out of. */
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <optional>

#include "Commands.h"
#include "FuzzInput.h"
#include "files/Complaint.h"
#include "files/Files.h"
#include "service/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* names[] = {"a.txt", "a.tsv", "a.po", "a"};

struct Command {
    const char* name;
    int (*run)(Arguments);
};
constexpr Command commands[] = {
    {"check", RunCheck},   {"convert", RunConvert},   {"merge", RunMerge},
    {"pseudo", RunPseudo}, {"template", RunTemplate},
};

/* While it lives, nobody sees what is printed. */
class Silence {
public:
    Silence() {
        stderr = nothing;
        dup2(fileno(nothing), STDOUT_FILENO);
    }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence() {
        stderr = errors;
        dup2(output, STDOUT_FILENO);
        close(output);
    }

private:
    inline static FILE* const nothing = std::fopen("/dev/null", "w");
    FILE* const errors = stderr;
    const int output = dup(STDOUT_FILENO);
};

using Pairs = std::map<WideString, WideString>;

/* Texts and translations, obsolete ones aside; none when the file has mistakes. */
std::optional<Pairs> PairsOf(const std::string& file) {
    Complaints complaints;
    Pairs pairs;
    for (const CatalogueEntry& entry : ReadCatalogue(file, complaints).entries) {
        if (!entry.isObsolete) pairs[entry.text] = entry.translation;
    }
    return complaints.empty() ? std::optional(pairs) : std::nullopt;
}

/* What is read of a file that is converted; nothing when it cannot be. */
std::optional<Pairs> PairsOfConverted(const std::string& file, const std::string& name) {
    const Silence silence;
    const std::vector<std::string> arguments{file, name};
    return RunConvert(arguments) == 0 ? PairsOf(name) : std::nullopt;
}

class TranslationCommand final : public FuzzTarget {
public:
    void Run(FuzzBytes bytes) override {
        fs::current_path(folder.Path());
        FuzzInput input(bytes);
        std::vector<std::string> arguments;
        for (std::string line = input.TakeLine(); !line.empty(); line = input.TakeLine()) {
            std::ranges::replace(line, '/', '_');
            arguments.push_back(line);
        }
        const char* const name = names[input.TakeByte() % std::size(names)];
        WriteFile(name, input.TakeRest());
        if (!arguments.empty()) RequireEnd(arguments);
        for (const auto& entry : fs::directory_iterator(folder.Path()))
            fs::remove_all(entry);
        fs::current_path("/");
    }

private:
    static void RequireEnd(const std::vector<std::string>& arguments) {
        const Command* const command =
            std::ranges::find_if(commands, [&](const Command& one) { return arguments[0] == one.name; });
        if (command == std::end(commands)) return;
        const Arguments rest = Arguments(arguments).subspan(1);
        int code = 2;
        std::string problem = "none";
        {
            const Silence silence;
            try {
                code = command->run(rest);
            } catch (const UsageError& error) {
                problem = error.what();
            }
        }
        Require(code >= 0 && code <= 2, "every command has an exit code");
        Require(!problem.empty(), "who uses it wrongly is told so");
        if (code == 0 && command->run == RunConvert) RequireConversion(rest);
    }

    /* Nothing is lost on the way to another form and back. */
    static void RequireConversion(Arguments arguments) {
        if (arguments.size() != 2 || arguments[1] == "-" || arguments[0] == arguments[1]) return;
        const auto pairs = PairsOf(arguments[0]);
        Require(pairs.has_value() && PairsOf(arguments[1]) == pairs, "texts survive another form");
        for (const char* const name : {"back.tsv", "back.po", "back.txt"}) {
            const auto back = PairsOfConverted(arguments[1], name);
            Require(!back || back == pairs, "texts survive two other forms");
        }
    }

    TemporaryFolder folder;
};

const bool isAdded = AddFuzzTarget<TranslationCommand>("TranslationCommand");

}  // namespace
