#include "text/Placeholders.h"

#include <algorithm>

namespace {

constexpr int mostUnits = 999; /* FormatString's */
constexpr int mostDigits = 20;

/* What a placeholder reads. */
struct Argument {
    WCHAR size = 0;  // the letter before the last one, of I64 and I32 the first digit; 0 without
    WCHAR type = 0;  // one letter for all that read the same type; 0 for what is never read

    bool operator==(const Argument&) const = default;
};

bool IsOneOf(WCHAR unit, const WCHAR* units) {
    return WideStringView(units).find(unit) != WideStringView::npos;
}

/* Steps over the digits of a number: which one it is, or one above mostUnits for all that are. */
int TakeNumber(const WCHAR*& at) {
    int number = 0;
    for (; *at >= '0' && *at <= '9'; ++at)
        number = std::min(number * 10 + (*at - '0'), mostUnits + 1);
    return number;
}

WCHAR TakeSize(const WCHAR*& at) {
    if (at[0] == 'I' && ((at[1] == '6' && at[2] == '4') || (at[1] == '3' && at[2] == '2'))) {
        at += 3;
        return at[-2];
    }
    return IsOneOf(*at, TEXT("hlwL")) ? *at++ : WCHAR{0};
}

WCHAR TypeOf(WCHAR letter) {
    if (IsOneOf(letter, TEXT("diuxXo"))) return 'd';
    if (IsOneOf(letter, TEXT("eEfgG"))) return 'f';
    return IsOneOf(letter, TEXT("sScCp")) ? letter : WCHAR{0};
}

/* Reads a placeholder behind its percent sign, up to its letter. */
Argument ReadPlaceholder(const WCHAR*& at) {
    while (IsOneOf(*at, TEXT("-+ #0")))
        ++at;
    const int width = TakeNumber(at);
    const int precision = *at == '.' ? TakeNumber(++at) : 0;
    const WCHAR size = TakeSize(at);
    const int most = IsOneOf(*at, TEXT("sScC")) ? mostUnits : mostDigits;
    if (width > most || precision > most) return {};
    return {size, TypeOf(*at)};
}

/* Moves `at` behind the next placeholder that reads an argument; false when there is none. */
bool FindArgument(const WCHAR*& at, Argument& argument) {
    for (; *at != 0; ++at) {
        if (*at != '%') continue;
        ++at;
        if (*at == '%') continue;
        argument = ReadPlaceholder(at);
        return true;
    }
    return false;
}

}  // namespace

bool ReadsArgumentsOf(const WCHAR* original, const WCHAR* format) {
    if (WideStringView(original) == WideStringView(format)) return true;
    Argument given;
    Argument read;
    while (FindArgument(format, read)) {
        if (read.type == 0 || !FindArgument(original, given) || given != read) return false;
    }
    return true;
}
