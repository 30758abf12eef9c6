#include "dictionary/KeyValueRows.h"

#include <cctype>
#include <sstream>

namespace {

constexpr std::string_view lowerDigits = "0123456789abcdef";

std::string HexDigitsOf(Random& random, size_t count) {
    std::string digits;
    for (size_t i = 0; i < count; ++i)
        digits += lowerDigits[random.Below(lowerDigits.size())];
    return digits;
}

std::string SomeValue(Random& random, size_t kind) {
    switch (kind) {
        case 0:
            return std::to_string(random.Below(1000000));
        case 1:
            return "0x" + HexDigitsOf(random, 4);
        case 2:
            return HexDigitsOf(random, 32);
        case 3:
            return std::string(EnglishWord(random));
        case 4:
            return random.Below(2) == 0 ? "yes" : "no";
        case 5:
            return SomeWords(random, 12, 24);
        case 6:
            return std::string(EnglishWord(random)) + "." + std::string(EnglishWord(random)) +
                   "@mail.example";
        default:
            return "/maps/" + std::string(EnglishWord(random)) + "/" + std::string(EnglishWord(random)) +
                   ".map";
    }
}

std::string EncodedValue(const std::string& value) {
    std::string encoded;
    for (const char letter : value) {
        const auto byte = static_cast<unsigned char>(letter);
        if (letter == ' ') {
            encoded += '+';
        } else if (isalnum(byte) != 0 || letter == '.') {
            encoded += letter;
        } else {
            encoded.append(1, '%').append(1, lowerDigits[byte >> 4]).append(1, lowerDigits[byte & 0x0F]);
        }
    }
    return encoded;
}

std::string DecodedValue(const std::string& encoded) {
    std::string value;
    for (size_t i = 0; i < encoded.size(); ++i) {
        if (encoded[i] == '%') {
            value += static_cast<char>(std::stoi(encoded.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            value += encoded[i] == '+' ? ' ' : encoded[i];
        }
    }
    return value;
}

}  // namespace

KeyValues SomeKeyValues(size_t count) {
    Random random(count);
    KeyValues entries;
    while (entries.size() < count) {
        std::string key(EnglishWord(random));
        key[0] = static_cast<char>(toupper(key[0]));
        std::erase(key, '-');
        entries[key + std::to_string(random.Below(10 * count))] = SomeValue(random, entries.size() % 8);
    }
    return entries;
}

std::string SectionFile(const KeyValues& entries) {
    std::string file = "[" + std::string(sectionName) + "]\n";
    for (const auto& [key, value] : entries)
        file.append(key).append("=").append(value).append("\n");
    return file;
}

std::string FormFile(const KeyValues& entries) {
    std::string file;
    for (const auto& [key, value] : entries)
        file.append(key).append("=").append(EncodedValue(value)).append("\n");
    return file;
}

KeyValues FromSectionFile(const std::string& file) {
    KeyValues entries;
    std::istringstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        const size_t equals = line.find('=');
        if (equals != std::string::npos) entries[line.substr(0, equals)] = line.substr(equals + 1);
    }
    return entries;
}

KeyValues FromFormFile(const std::string& file) {
    KeyValues entries = FromSectionFile(file);
    for (auto& [key, value] : entries)
        value = DecodedValue(value);
    return entries;
}

std::string OutcomeOf(const KeyValues& entries) {
    std::string outcome;
    for (const auto& [key, value] : entries)
        outcome.append(key).append("=").append(value).append("\n");
    return outcome;
}
