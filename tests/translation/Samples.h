/* What tests of catalogues share. */
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "files/Catalogue.h"
#include "files/Complaint.h"
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

/* All that a catalogue holds but the numbers of lines. */
inline std::string Described(const Catalogue& catalogue) {
    std::vector<std::vector<WideString>> all = {catalogue.notes, catalogue.places, catalogue.references,
                                                catalogue.flags};
    for (const CatalogueField& field : catalogue.fields)
        all.push_back({field.name, field.value});
    for (const CatalogueEntry& entry : catalogue.entries) {
        const auto flag = [](bool isSet) { return isSet ? WideString(u"1") : WideString(u"0"); };
        all.push_back({entry.text, entry.translation, entry.screen, entry.guessedFrom,
                       entry.guessedFromScreen, flag(entry.isFormat), flag(entry.isFuzzy),
                       flag(entry.isObsolete)});
        all.insert(all.end(), {entry.notes, entry.places, entry.references, entry.flags});
    }
    return testing::PrintToString(catalogue.isHeadFuzzy) + testing::PrintToString(all);
}
