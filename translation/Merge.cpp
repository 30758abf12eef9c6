#include "Merge.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include "Utf16.h"
#include "files/CatalogueBuilder.h"
#include "files/Quoted.h"
#include "ui/Ornaments.h"

namespace {

/* Whether a note of the whole file names the version and, behind a colon, the language. */
bool IsTitle(const WideString& note) {
    static const std::string version = NameOfVersion();
    static const WideString product = Utf16Of(version.substr(0, version.rfind(' ') + 1));
    return note.starts_with(product) && note.find(u": ") != WideString::npos;
}

bool IsBegun(const Catalogue& catalogue) {
    return std::ranges::any_of(catalogue.entries,
                               [](const CatalogueEntry& entry) { return !entry.translation.empty(); });
}

class Merger {
public:
    Merger(const Catalogue& from, Catalogue into, std::vector<MergeConflict>& toTell)
        : old(from), merged(std::move(into)), conflicts(toTell) {
        // An obsolete entry counts only where there is no other.
        for (const CatalogueEntry& entry : old.entries) {
            if (!entry.isObsolete) oldByText.emplace(entry.text, &entry);
        }
        for (const CatalogueEntry& entry : old.entries) {
            oldByText.emplace(entry.text, &entry);
            AddByPlainText(entry);
        }
        for (const CatalogueEntry& entry : merged.entries)
            (entry.isObsolete ? obsoleteTexts : texts).insert(entry.text);
    }

    Catalogue Merge(bool isWhole) {
        MergeHead();
        for (CatalogueEntry& entry : merged.entries) {
            if (!entry.isObsolete) TakeOld(entry);
        }
        for (const CatalogueEntry& entry : old.entries)
            KeepOld(entry, isWhole);
        return std::move(merged);
    }

private:
    void MergeHead() {
        for (const WideString& note : old.notes) {
            const auto title = std::ranges::find_if(merged.notes, IsTitle);
            if (title == merged.notes.end() || !IsTitle(note))
                AddOnce(merged.notes, {note});
            else if (IsBegun(old))
                *title = title->substr(0, title->find(u": ")) + note.substr(note.find(u": "));
        }
        for (const CatalogueField& field : old.fields) {
            const auto same = std::ranges::find_if(merged.fields, [&field](const CatalogueField& other) {
                return other.name == field.name && (!field.name.empty() || other.value == field.value);
            });
            if (same == merged.fields.end())
                merged.fields.push_back(field);
            else if (same->value.empty())
                same->value = field.value;
        }
        AddOnce(merged.places, old.places);
        AddOnce(merged.references, old.references);
        AddOnce(merged.flags, old.flags);
        merged.isHeadFuzzy = merged.isHeadFuzzy && (old.isHeadFuzzy || old.fields.empty());
    }

    /* Of several texts that differ in their ornaments alone, the one without any is looked up by the library
     * for all. */
    void AddByPlainText(const CatalogueEntry& entry) {
        if (entry.translation.empty()) return;
        const WideString plain = WithoutOrnaments(entry.text);
        const auto [found, isNew] = oldByPlainText.emplace(plain, &entry);
        const CatalogueEntry& known = *found->second;
        const bool isBetter = (known.isObsolete && !entry.isObsolete) ||
                              (entry.text == plain && entry.isObsolete == known.isObsolete);
        if (!isNew && isBetter) found->second = &entry;
    }

    [[nodiscard]] const CatalogueEntry* FindOld(const WideString& text) const {
        const auto found = oldByText.find(text);
        return found == oldByText.end() ? nullptr : found->second;
    }

    void TakeOld(CatalogueEntry& entry) {
        const CatalogueEntry* const same = FindOld(entry.text);
        if (same != nullptr) TakeWhatIsKnown(entry, *same);
        if (!entry.translation.empty() && !IsGuessAgainst(entry, same)) {
            TellConflict(entry, same);
        } else if (same != nullptr && !same->translation.empty()) {
            entry.translation = same->translation;
            entry.isFuzzy = same->isFuzzy;
            entry.guessedFrom = same->guessedFrom;
            entry.guessedFromScreen = same->guessedFromScreen;
        } else {
            Guess(entry);
        }
    }

    /* What stands beside the old text, as far as the new one does not tell it: a harvest tells nothing. */
    static void TakeWhatIsKnown(CatalogueEntry& entry, const CatalogueEntry& same) {
        AddOnce(entry.notes, same.notes);
        AddOnce(entry.flags, same.flags);
        if (!entry.screen.empty() || !entry.places.empty() || !entry.references.empty()) return;
        entry.screen = same.screen;
        entry.places = same.places;
        entry.references = same.references;
        entry.isFormat = entry.isFormat || same.isFormat;
    }

    /* Whether the translation is a guess where the old one is none. */
    static bool IsGuessAgainst(const CatalogueEntry& entry, const CatalogueEntry* same) {
        return entry.isFuzzy && same != nullptr && !same->isObsolete && !same->isFuzzy &&
               !same->translation.empty();
    }

    void TellConflict(const CatalogueEntry& entry, const CatalogueEntry* same) {
        if (same == nullptr || same->isObsolete || same->translation.empty()) return;
        const bool wasGuess = same->isFuzzy && !entry.isFuzzy;
        if (!wasGuess && same->translation != entry.translation)
            conflicts.push_back({same->line, entry.line, entry.text});
    }

    void Guess(CatalogueEntry& entry) const {
        const auto found = oldByPlainText.find(WithoutOrnaments(entry.text));
        if (found == oldByPlainText.end() || found->first.empty()) return;
        const CatalogueEntry& without = *found->second;
        AddOnce(entry.notes, without.notes);
        entry.translation = without.translation;
        entry.isFuzzy = true;
        entry.guessedFrom = without.text;
        entry.guessedFromScreen = without.screen;
    }

    /* Keeps what only the old one has. */
    void KeepOld(const CatalogueEntry& entry, bool isWhole) {
        if (texts.contains(entry.text)) return;
        const bool becomesObsolete = entry.isObsolete || isWhole;
        if (becomesObsolete && entry.translation.empty()) return;
        if (!obsoleteTexts.insert(entry.text).second) return;
        merged.entries.push_back(entry);
        merged.entries.back().isObsolete = becomesObsolete;
    }

    const Catalogue& old;
    Catalogue merged;
    std::vector<MergeConflict>& conflicts;
    std::map<WideStringView, const CatalogueEntry*> oldByText;
    std::map<WideString, const CatalogueEntry*> oldByPlainText; /* those with a translation */
    std::set<WideString> texts;                                 /* of the new one, without obsolete ones */
    std::set<WideString> obsoleteTexts; /* of the new one, and all that only the old one has */
};

}  // namespace

Catalogue Merge(const Catalogue& old, Catalogue fresh, bool isWhole, std::vector<MergeConflict>& conflicts) {
    return Merger(old, std::move(fresh), conflicts).Merge(isWhole);
}
