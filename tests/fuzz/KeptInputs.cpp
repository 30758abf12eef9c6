#include "KeptInputs.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace {

/* Takes one character of a word; false when it cannot be understood. */
bool TakeCharacter(std::string_view& rest, std::string& word) {
    size_t used = 1;
    char character = rest[0];
    if (character == '\\') {
        if (rest.starts_with("\\\\") || rest.starts_with("\\\"")) {
            used = 2;
            character = rest[1];
        } else {
            unsigned number = 0;
            const std::string_view digits = rest.substr(std::min<size_t>(2, rest.size()), 2);
            const char* const end = digits.data() + digits.size();
            if (!rest.starts_with("\\x") || digits.size() != 2) return false;
            if (std::from_chars(digits.data(), end, number, 16).ptr != end) return false;
            used = 4;
            character = static_cast<char>(number);
        }
    }
    word += character;
    rest.remove_prefix(used);
    return true;
}

}  // namespace

std::string ReadInput(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error("cannot read " + file.string());
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> ReadInputs(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(folder, none))
        files.push_back(entry.path());
    std::ranges::sort(files);
    std::vector<std::string> inputs;
    std::ranges::transform(files, std::back_inserter(inputs), ReadInput);
    return inputs;
}

std::vector<std::string> ReadWords(const std::filesystem::path& file) {
    if (!std::filesystem::exists(file)) return {};
    std::istringstream lines(ReadInput(file));
    std::vector<std::string> words;
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line.front() == '#') continue;
        std::string_view rest = line;
        const bool isQuoted = rest.size() >= 2 && rest.front() == '"' && rest.back() == '"';
        if (isQuoted) rest = rest.substr(1, rest.size() - 2);
        std::string word;
        while (isQuoted && !rest.empty() && TakeCharacter(rest, word)) {
        }
        if (!isQuoted || !rest.empty()) throw std::runtime_error(file.string() + ": no word: " + line);
        words.push_back(word);
    }
    return words;
}
