/* What stands in the lines of a .po file's messages, as far as gettext's library does not give it. */
#pragma once

#include "text/WideString.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct PoMessageLines {
    size_t text = 0; /* the number of the line that its msgid stands in */
    /* Each once. */
    std::vector<WideString> flags; /* without those that CatalogueEntry has by themselves */
    std::vector<WideString> references;
};

/* Calls with each line, without its end, and its number from 1. */
template <class Take>
void ForEachLine(std::string_view text, Take take) {
    for (size_t number = 1; !text.empty(); ++number) {
        const size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        while (line.ends_with('\r'))
            line.remove_suffix(1);
        take(line, number);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

/* Of each message, the head and obsolete ones included, in their order. `bytes` are UTF-8. */
std::vector<PoMessageLines> ReadPoLines(std::string_view bytes);

/* The notes that belong to no message, at the end of the file. */
std::vector<WideString> NotesBehindMessages(std::string_view bytes);

/* `bytes` with an empty line for each of references: gettext's library looks each up among all others. */
std::string WithoutReferences(std::string_view bytes);
