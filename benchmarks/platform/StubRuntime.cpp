/* The stub platform's wide runtime, as cheap as a device's could be. */
#include "Platform.h"

#include <algorithm>
#include <string>

namespace {

std::string Narrow(const WCHAR* text) {
    std::string narrow;
    for (; *text != 0; ++text)
        narrow += static_cast<char>(*text);
    return narrow;
}

/* Writes units as bytes; how many, or -1 when one has no byte. */
int PutText(FILE* file, const WCHAR* text) {
    int count = 0;
    for (; text[count] != 0; ++count) {
        if (text[count] > 0xFF || putc_unlocked(text[count], file) == EOF) return -1;
    }
    return count;
}

}  // namespace

FILE* _wfopen(const WCHAR* path, const WCHAR* mode) {
    return fopen(Narrow(path).c_str(), Narrow(mode).c_str());
}

/* Knows %s, the only thing that the library asks of it. */
int fwprintf(FILE* file, const WCHAR* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    int count = 0;
    for (; *format != 0 && count >= 0; ++format) {
        int some = 1;
        if (format[0] == '%' && format[1] == 's') {
            ++format;
            some = PutText(file, va_arg(arguments, const WCHAR*));
        } else if (putc_unlocked(*format, file) == EOF) {
            some = -1;
        }
        count = some < 0 ? -1 : count + some;
    }
    va_end(arguments);
    return count;
}

WCHAR* wcsncpy(WCHAR* destination, const WCHAR* source, size_t count) {
    size_t copied = 0;
    for (; copied < count && source[copied] != 0; ++copied)
        destination[copied] = source[copied];
    std::fill(destination + copied, destination + count, WCHAR{0});
    return destination;
}

size_t wcslen(const WCHAR* text) {
    const WCHAR* end = text;
    while (*end != 0)
        ++end;
    return static_cast<size_t>(end - text);
}
