#include "CommandLine.h"

#include <algorithm>

#include "files/Complaint.h"

std::string CommandLine::Value(std::string_view option, std::string_view otherwise) const {
    const auto found = options.find(option);
    return found == options.end() ? std::string(otherwise) : found->second;
}

CommandLine ReadCommandLine(std::string_view usage, FileCount count,
                            std::initializer_list<std::string_view> options, Arguments arguments) {
    CommandLine line;
    bool areFiles = false;
    for (; !arguments.empty(); arguments = arguments.subspan(1)) {
        const std::string& argument = arguments.front();
        if (areFiles || argument == "-" || !argument.starts_with('-')) {
            line.files.push_back(argument);
            continue;
        }
        if (argument == "--") {
            areFiles = true;
            continue;
        }
        const size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        if (std::ranges::find(options, name) == options.end())
            throw UsageError("unknown option '" + name + "'; the command is " + std::string(usage));
        if (equals == std::string::npos) arguments = arguments.subspan(1);
        const std::string value = equals != std::string::npos ? argument.substr(equals + 1)
                                  : arguments.empty()         ? ""
                                                              : arguments.front();
        if (value.empty()) throw UsageError(name + " needs a value");
        line.options.insert_or_assign(name, value);
        if (arguments.empty()) break;
    }
    const size_t named = line.files.size();
    if (named < count.least || named > count.most)
        throw UsageError(std::to_string(named) + (named == 1 ? " file is" : " files are") +
                         " named; the command is " + std::string(usage));
    return line;
}
