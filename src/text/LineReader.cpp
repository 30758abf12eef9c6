#include "text/LineReader.h"

namespace {

bool HasContent(const WideString& line) {
    const size_t first = line.find_first_not_of(TEXT(" \t"));
    return first != WideString::npos && line[first] != '#';
}

void AppendRestOfLine(FILE* file, WideString& line) {
    for (;;) {
        // As a signed char a byte 0xFF is -1, like the end of the file, and so ends the line, too.
        const auto value = static_cast<signed char>(fgetc(file));
        if (value == -1 || value == '\n') return;
        if (value == '\r' || value == '\0') continue;
        line += static_cast<WCHAR>(value);
    }
}

}  // namespace

bool ReadContentLine(FILE* file, WideString& line) {
    if (!file) return false;
    for (;;) {
        line.clear();
        // A stream may fail for ever without reaching its end: on some systems a folder opened as a file
        // does.
        if (feof(file) || ferror(file)) return false;
        AppendRestOfLine(file, line);
        if (HasContent(line)) return true;
    }
}
