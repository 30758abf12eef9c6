#include "CatalogueBuilder.h"

#include <algorithm>
#include <utility>

void AddOnce(std::vector<WideString>& lines, const std::vector<WideString>& added) {
    for (const WideString& line : added) {
        if (std::ranges::find(lines, line) == lines.end()) lines.push_back(line);
    }
}

WideString TranslationOrNone(WideString translation) {
    if (translation == u"XXXX") translation.clear();
    return translation;
}

CatalogueEntry* CatalogueBuilder::Find(const WideString& text) {
    const auto found = indices.find(text);
    return found == indices.end() ? nullptr : &catalogue.entries[found->second];
}

void CatalogueBuilder::Add(CatalogueEntry entry) {
    CatalogueEntry* const earlier = entry.isObsolete ? nullptr : Find(entry.text);
    if (earlier == nullptr) {
        if (!entry.isObsolete) indices.emplace(entry.text, catalogue.entries.size());
        catalogue.entries.push_back(std::move(entry));
        return;
    }
    AddOnce(earlier->notes, entry.notes);
    AddOnce(earlier->places, entry.places);
    AddOnce(earlier->references, entry.references);
    earlier->isFormat = earlier->isFormat || entry.isFormat;
    if (entry.translation.empty()) return;
    earlier->translation = std::move(entry.translation);
    earlier->isFuzzy = entry.isFuzzy;
    earlier->guessedFrom = std::move(entry.guessedFrom);
    earlier->line = entry.line;
}
