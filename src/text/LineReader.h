/* Reading of the library's own text files, line by line. */
#pragma once

#include "text/WideString.h"

class LineReader {
public:
    /* Reads the rest of `opened`, ahead of the lines that it delivers. The file is not owned; null has no
     * lines. */
    explicit LineReader(FILE* opened) : file(opened) {}

    /* Reads the next line that carries content into `line`: lines that are empty, hold only spaces and tabs,
     * or whose first other unit is # are passed over. The line comes as it is in the file, untrimmed, without
     * its end.
     *
     * A line ends at a line feed, at a byte 0xFF and at the end of the file; carriage returns and NUL bytes
     * are skipped wherever they are. Every other byte is one unit, sign-extended: 0xE9 becomes U+FFE9. Lines
     * have no greatest length.
     *
     * False when no such line is left, with `line` empty. A file whose end-of-file or error indicator is set
     * has no lines left but those that were read before; what was read of a line before an error is
     * delivered. False without a file, with `line` as it was. */
    bool ReadContentLine(WideString& line);

private:
    bool HasMore();
    void ReadRestOfLine(WideString& line);

    FILE* file;
    size_t blockPos = 0;  /* the next unread byte of the block */
    size_t blockSize = 0; /* how many bytes of the block the last read filled */
    int8_t block[256];
};
