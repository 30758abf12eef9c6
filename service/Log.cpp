#include "Log.h"

#include <cstdio>
#include <string>

void LogLine(std::string_view text) {
    constexpr char digits[] = "0123456789abcdef";
    std::string line;
    for (const char letter : text) {
        const auto byte = static_cast<unsigned char>(letter);
        if (byte >= 0x20 && byte != 0x7F) {
            line += letter;
        } else {
            line += "\\x";
            line += digits[byte >> 4];
            line += digits[byte & 15];
        }
    }
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}
