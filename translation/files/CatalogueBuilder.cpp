#include "files/CatalogueBuilder.h"

#include <utility>

#include "files/Quoted.h"

namespace {

/* `known` are the lines, or empty when they are not known yet. */
void AddUnknown(std::vector<WideString>& lines, const std::vector<WideString>& added,
                std::set<WideString>& known) {
    if (added.empty()) return;
    if (known.empty()) known.insert(lines.begin(), lines.end());
    for (const WideString& line : added) {
        if (known.insert(line).second) lines.push_back(line);
    }
}

}  // namespace

void AddOnce(std::vector<WideString>& lines, const std::vector<WideString>& added) {
    std::set<WideString> known;
    AddUnknown(lines, added, known);
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
    Beside& known = besides[found->second];
    AddUnknown(earlier.notes, entry.notes, known.notes);
    AddUnknown(earlier.places, entry.places, known.places);
    AddUnknown(earlier.references, entry.references, known.references);
    AddUnknown(earlier.flags, entry.flags, known.flags);
    earlier.isFormat = earlier.isFormat || entry.isFormat;
    if (entry.translation.empty()) return;
    if (!earlier.translation.empty() && earlier.translation != entry.translation)
        Complain(catalogue.losses, earlier.line,
                 Quoted(entry.text) + " is translated otherwise in line " + std::to_string(entry.line) +
                     ", which counts");
    earlier.translation = std::move(entry.translation);
    earlier.isFuzzy = entry.isFuzzy;
    earlier.guessedFrom = std::move(entry.guessedFrom);
    earlier.guessedFromScreen = std::move(entry.guessedFromScreen);
    earlier.line = entry.line;
}

Catalogue CatalogueBuilder::Take() {
    for (const auto& [text, index] : obsolete) {
        CatalogueEntry* const used = Find(text);
        if (used == nullptr) continue;
        const CatalogueEntry& other = catalogue.entries[index];
        AddOnce(used->notes, other.notes);
        if (used->translation.empty())
            used->translation = other.translation;
        else if (used->translation != other.translation)
            Complain(catalogue.losses, other.line,
                     "the obsolete translation " + Quoted(other.translation) +
                         " is left out: its text is in use in line " + std::to_string(used->line));
    }
    std::erase_if(catalogue.entries, [this](const CatalogueEntry& entry) {
        return entry.isObsolete && inUse.contains(entry.text);
    });
    return std::move(catalogue);
}
