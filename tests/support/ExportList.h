/* The names that the library's file has to export. */
#pragma once

#include <istream>
#include <set>
#include <string>

/* The names of a module-definition file, src/frame/Exports.def; none when it cannot be read. */
inline std::set<std::string> ReadExportList(std::istream& definitions) {
    std::string word;
    while (definitions >> word && word != "EXPORTS") {
    }
    std::set<std::string> names;
    while (definitions >> word)
        names.insert(word);
    return names;
}
