#include "KeyValueReading.h"

#include <algorithm>

namespace {

constexpr std::u16string_view blanks = u" \t\r\n";

std::u16string_view Trimmed(std::u16string_view text) {
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::u16string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

int DigitOf(char16_t unit) {
    if (unit >= u'0' && unit <= u'9') return unit - u'0';
    const auto letter = static_cast<char16_t>(unit | 0x20U);
    return unit < 0x80 && letter >= u'a' && letter <= u'f' ? letter - u'a' + 10 : -1;
}

std::u16string Decoded(std::u16string_view text) {
    std::u16string decoded;
    while (!text.empty()) {
        const char16_t unit = text.front();
        size_t used = 1;
        if (unit == u'%') {
            if (text.size() < 3) break;
            used = 3;
            const int high = DigitOf(text[1]);
            const int low = DigitOf(text[2]);
            if (high < 0 || low < 0)
                decoded += text.substr(0, 3);
            else
                decoded += static_cast<char16_t>(16 * high + low);
        } else {
            decoded += unit == u'+' ? u' ' : unit;
        }
        text.remove_prefix(used);
    }
    return decoded;
}

void ReadLine(std::u16string_view line, KeyValuePairs& pairs) {
    const size_t first = line.find_first_not_of(u" \t");
    if (first != std::u16string_view::npos && line[first] != u'#') ReadFormText(line, pairs);
}

}  // namespace

void ReadKeyValueFile(std::string_view bytes, KeyValuePairs& pairs) {
    std::u16string line;
    for (const char unit : bytes.substr(0, bytes.find('\x1A'))) {
        if (unit == '\n' || unit == '\xFF') {
            ReadLine(line, pairs);
            line.clear();
        } else if (unit != '\r' && unit != '\0') {
            line += static_cast<char16_t>(static_cast<signed char>(unit));
        }
    }
    ReadLine(line, pairs);
}

void ReadFormText(std::u16string_view text, KeyValuePairs& pairs) {
    for (bool isLast = false; !isLast;) {
        const size_t end = text.find(u'&');
        isLast = end == std::u16string_view::npos;
        const std::u16string_view pair = text.substr(0, end);
        if (!isLast) text.remove_prefix(end + 1);
        const size_t equals = pair.find(u'=');
        if (equals == std::u16string_view::npos) continue;
        const std::u16string_view key = Trimmed(pair.substr(0, equals));
        const std::u16string_view value = Trimmed(pair.substr(equals + 1));
        if (!key.empty() && !value.empty()) pairs[std::u16string(key)] = Decoded(value);
    }
}

bool SurvivesAsKey(std::u16string_view key) {
    if (key.empty() || key.front() == u'#') return false;
    for (const char16_t end : {key.front(), key.back()}) {
        if (end == u' ' || end == u'\t') return false;
    }
    return std::ranges::all_of(key, [](char16_t unit) {
        const bool canBeRead = (unit >= 1 && unit <= 0x7F) || (unit >= 0xFF80 && unit <= 0xFFFE);
        return canBeRead && std::u16string_view(u"\n\r\x1A=&").find(unit) == std::u16string_view::npos;
    });
}

std::u16string SurvivingValue(std::u16string_view value) {
    std::u16string surviving;
    for (const char16_t unit : value) {
        if (unit == 0 || (unit & 0xFFU) != 0) surviving += static_cast<char16_t>(unit & 0xFFU);
    }
    return surviving;
}
