#include "text/LineReader.h"

namespace {

bool HasContent(const WideString& line) {
    const size_t first = line.find_first_not_of(TEXT(" \t"));
    return first != WideString::npos && line[first] != TEXT('#');
}

}  // namespace

bool LineReader::ReadContentLine(WideString& line) {
    if (!file) return false;
    while (HasMore()) {
        ReadRestOfLine(line);
        if (HasContent(line)) return true;
    }
    line.clear();
    return false;
}

/* Whether there is a byte to be read; reads the next block when the last one is used up. */
bool LineReader::HasMore() {
    if (blockPos < blockSize) return true;
    // A file may fail for ever without reaching its end: on some systems a folder opened as a file does.
    if (feof(file) || ferror(file)) return false;
    blockPos = 0;
    blockSize = fread(block, 1, sizeof block, file);
    return blockSize > 0;
}

void LineReader::ReadRestOfLine(WideString& line) {
    line.clear();
    while (HasMore()) {
        WCHAR units[sizeof block];
        size_t count = 0;
        while (blockPos < blockSize) {
            const int8_t value = block[blockPos++];
            if (value == '\n' || value == -1) {
                line.append(units, count);
                return;
            }
            if (value != '\r' && value != '\0') units[count++] = static_cast<WCHAR>(value);
        }
        line.append(units, count);
    }
}
