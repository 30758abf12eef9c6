/* What tests of catalogues share. */
#pragma once

#include <string>
#include <vector>

#include "Complaint.h"
#include "text/WideString.h"

/* The complaints as "LINE: SENTENCE". */
inline std::vector<std::string> Sentences(const Complaints& complaints) {
    std::vector<std::string> sentences;
    for (const Complaint& complaint : complaints)
        sentences.push_back(std::to_string(complaint.line) + ": " + complaint.sentence);
    return sentences;
}

/* The bytes of UTF-16LE. */
inline std::string Utf16Bytes(WideStringView text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(WCHAR)};
}
