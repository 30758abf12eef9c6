/* A catalogue that a file is read into, text by text. */
#pragma once

#include <map>
#include <set>

#include "files/Catalogue.h"

/* Adds what is not there yet. */
void AddOnce(std::vector<WideString>& lines, const std::vector<WideString>& added);

/* What a file's translation says: XXXX stands for none. */
WideString TranslationOrNone(WideString translation);

class CatalogueBuilder {
public:
    [[nodiscard]] Catalogue& Get() { return catalogue; }

    /* The entry of `text` that is not obsolete, or null; valid until the next is added. */
    [[nodiscard]] CatalogueEntry* Find(const WideString& text);

    /* When the text is there already, and likewise obsolete or not, its entry takes what it lacks, and the
     * later translation. */
    void Add(CatalogueEntry entry);

    /* The catalogue. An obsolete entry whose text is in use has been left out: its notes are taken by the
     * other, and its translation when that has none. Two translations of one text are told as a loss. */
    Catalogue Take();

private:
    /* What stands beside a text that was met before, for a quick look. */
    struct Beside {
        std::set<WideString> notes;
        std::set<WideString> places;
        std::set<WideString> references;
        std::set<WideString> flags;
    };

    Catalogue catalogue;
    std::map<size_t, Beside> besides; /* by the index of the entry */
    std::map<WideString, size_t> inUse;
    std::map<WideString, size_t> obsolete;
};
