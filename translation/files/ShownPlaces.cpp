#include "files/ShownPlaces.h"

#include "Utf16.h"
#include "files/CatalogueBuilder.h"

namespace {

bool IsShownSomewhere(const CatalogueEntry& entry) {
    return !entry.screen.empty() || !entry.places.empty() || !entry.references.empty();
}

}  // namespace

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

std::string PlaceText(const TextPlace& place) {
    std::string text = std::string(place.screen) + ": " + std::string(NameOf(place.kind));
    if (place.kind == TextKind::Title) return text + " of message boxes, always English";
    if (place.width == 0) return text;
    return text + ", " + std::to_string(place.width) + " x " + std::to_string(place.height);
}

void TakePlaces(CatalogueEntry& entry, const ShownText& shown) {
    entry.screen = shown.places.empty() ? WideString() : Utf16Of(shown.places.front().screen);
    entry.places.clear();
    entry.references.clear();
    for (const TextPlace& place : shown.places) {
        AddOnce(entry.places, {Utf16Of(PlaceText(place))});
        AddOnce(entry.references, {Utf16Of(place.source)});
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
