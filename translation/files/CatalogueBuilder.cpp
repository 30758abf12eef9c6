#include "files/CatalogueBuilder.h"

#include <set>
#include <utility>

void AddOnce(std::vector<WideString>& lines, const std::vector<WideString>& added) {
    if (added.empty()) return;
    std::set<WideString> known(lines.begin(), lines.end());
    for (const WideString& line : added) {
        if (known.insert(line).second) lines.push_back(line);
    }
}

WideString TranslationOrNone(WideString translation) {
    if (translation == u"XXXX") translation.clear();
    return translation;
}

CatalogueEntry* CatalogueBuilder::Find(const WideString& text) {
    const auto found = inUse.find(text);
    return found == inUse.end() ? nullptr : &catalogue.entries[found->second];
}

void CatalogueBuilder::Add(CatalogueEntry entry) {
    std::map<WideString, size_t>& indices = entry.isObsolete ? obsolete : inUse;
    const auto [found, isNew] = indices.try_emplace(entry.text, catalogue.entries.size());
    if (isNew) {
        catalogue.entries.push_back(std::move(entry));
        return;
    }
    CatalogueEntry& earlier = catalogue.entries[found->second];
    AddOnce(earlier.notes, entry.notes);
    AddOnce(earlier.places, entry.places);
    AddOnce(earlier.references, entry.references);
    earlier.isFormat = earlier.isFormat || entry.isFormat;
    if (entry.translation.empty()) return;
    earlier.translation = std::move(entry.translation);
    earlier.isFuzzy = entry.isFuzzy;
    earlier.guessedFrom = std::move(entry.guessedFrom);
    earlier.line = entry.line;
}

Catalogue CatalogueBuilder::Take() {
    for (const auto& [text, index] : obsolete) {
        CatalogueEntry* const used = Find(text);
        if (used != nullptr && used->translation.empty())
            used->translation = catalogue.entries[index].translation;
    }
    std::erase_if(catalogue.entries, [this](const CatalogueEntry& entry) {
        return entry.isObsolete && inUse.contains(entry.text);
    });
    return std::move(catalogue);
}
