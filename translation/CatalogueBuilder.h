/* A catalogue that a file is read into, text by text. */
#pragma once

#include <map>

#include "Catalogue.h"

/* Adds what is not there yet. */
void AddOnce(std::vector<WideString>& lines, const std::vector<WideString>& added);

/* What a file's translation says: XXXX stands for none. */
WideString TranslationOrNone(WideString translation);

class CatalogueBuilder {
public:
    [[nodiscard]] Catalogue& Get() { return catalogue; }

    /* The entry of `text` that is not obsolete, or null; valid until the next is added. */
    [[nodiscard]] CatalogueEntry* Find(const WideString& text);

    /* An obsolete entry is added as it is. Of any other the text may be there already: then its entry takes
     * what it lacks, and the later translation. */
    void Add(CatalogueEntry entry);

private:
    Catalogue catalogue;
    std::map<WideString, size_t> indices; /* of entries that are not obsolete */
};
