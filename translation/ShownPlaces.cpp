#include "ShownPlaces.h"

#include <algorithm>

#include "Utf16.h"

namespace {

std::string_view NameOf(TextKind kind) {
    switch (kind) {
        case TextKind::Title:
            return "title";
        case TextKind::Caption:
            return "caption";
        case TextKind::Label:
            return "label";
        case TextKind::CheckBox:
            return "check box";
        case TextKind::SoftKey:
            return "soft key";
        case TextKind::MenuItem:
            return "menu item";
        case TextKind::Message:
            break;
    }
    return "message";
}

void AddOnce(std::vector<WideString>& lines, WideString line) {
    if (std::ranges::find(lines, line) == lines.end()) lines.push_back(std::move(line));
}

bool IsShownSomewhere(const CatalogueEntry& entry) {
    return !entry.screen.empty() || !entry.places.empty() || !entry.references.empty();
}

}  // namespace

void TakePlaces(CatalogueEntry& entry, const ShownText& shown) {
    entry.screen = shown.places.empty() ? WideString() : Utf16Of(shown.places.front().screen);
    entry.places.clear();
    entry.references.clear();
    for (const TextPlace& place : shown.places) {
        AddOnce(entry.places, Utf16Of(std::string(place.screen) + ": ").append(Utf16Of(NameOf(place.kind))));
        AddOnce(entry.references, Utf16Of(place.source));
    }
    entry.isFormat = shown.isFormat;
}

void TakePlacesOfThisVersion(Catalogue& catalogue) {
    for (CatalogueEntry& entry : catalogue.entries) {
        if (entry.isObsolete) continue;
        const ShownText* const shown = FindShownText(entry.text);
        if (shown == nullptr) continue;
        if (!IsShownSomewhere(entry)) TakePlaces(entry, *shown);
        if (shown->isFormat) entry.isFormat = true;
    }
}
