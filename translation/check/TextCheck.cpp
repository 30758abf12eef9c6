#include "check/TextCheck.h"

#include <algorithm>
#include <span>

#include "Utf16.h"
#include "check/CharacterCheck.h"
#include "check/FoundPlaceholders.h"
#include "check/Mentions.h"
#include "check/SimilarText.h"
#include "files/Quoted.h"
#include "files/ShownPlaces.h"
#include "text/Placeholders.h"
#include "texts/TextWidth.h"
#include "ui/Ornaments.h"

namespace {

/* Nobody is helped by more, and to look for similar texts takes time. */
constexpr size_t mostSimilar = 100;
constexpr size_t mostTold = 1000;
constexpr size_t mostListed = 10;

bool IsTitle(const ShownText& shown) {
    return shown.places.front().kind == TextKind::Title;
}

/* Nor those that take no room. */
WideStringView WithoutBlanks(WideStringView text) {
    constexpr WideStringView blanks = u" \t\n\u00A0\u3000\u00AD\u200B\u200C\u200D\u200E\u200F\u2060\uFEFF";
    const size_t begin = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

/* Whether there is nothing to be seen but the double quotes of a field that a spreadsheet left empty. */
bool IsBlank(WideStringView translation) {
    return translation.find_first_not_of(u'"') == WideStringView::npos || WithoutBlanks(translation).empty();
}

/* XXXX as people type it, or left beside their words. */
bool IsMarkOfNone(WideStringView translation) {
    const WideStringView mark = WithoutBlanks(translation);
    if (mark.find(u"XXXX") != WideStringView::npos) return true;
    return mark.size() >= 3 && mark.find_first_not_of(u"Xx") == WideStringView::npos;
}

/* Beside the text that is meant, a blank that is none, or nothing to be seen, would be looked for in vain. */
WideString WithVisibleBlanks(WideString text) {
    std::ranges::replace_if(
        text,
        [](WCHAR unit) {
            return unit == 0xA0 || unit == 0xAD || (unit >= 0x2000 && unit <= 0x200F) || unit == 0xFEFF;
        },
        u'\x25A1');
    return text;
}

/* Whether there is something to be shown. */
bool IsTranslation(WideStringView translation) {
    return !IsBlank(translation) && !IsMarkOfNone(translation);
}

/* How many & of a text are taken for marks of access keys, and not seen. */
size_t CountAccessKeys(WideStringView text) {
    size_t count = 0;
    for (size_t at = text.find(u'&'); at != WideStringView::npos; at = text.find(u'&', at + 2)) {
        if (!text.substr(at).starts_with(u"&&")) ++count;
    }
    return count;
}

std::string ListOf(std::span<const WideStringView> placeholders) {
    std::string list;
    for (const WideStringView placeholder : placeholders.first(std::min(placeholders.size(), mostListed)))
        list += (list.empty() ? "" : ", ") + Quoted(placeholder);
    if (placeholders.size() > mostListed) list += " and more";
    return list.empty() ? "none" : list;
}

/* What has the room, as people call it. */
std::string OwnerOfRoom(const TextPlace& place) {
    switch (place.kind) {
        case TextKind::SoftKey:
            return "a soft key on a screen of 176x220";
        case TextKind::MenuItem:
            return "a menu on a screen of 176x220";
        case TextKind::Caption:
            return "the caption on a screen of 176x220";
        case TextKind::Message:
            return "a message on a screen of 176x220";
        case TextKind::Label:
        case TextKind::CheckBox:
        case TextKind::Title:
            break;
    }
    return "its " + std::string(NameOf(place.kind)) + " on the screen '" + place.screen + "'";
}

class TextCheck {
public:
    TextCheck(const CheckedFile& checked, Complaints& added)
        : file(checked), catalogue(checked.catalogue), complaints(added) {}

    void Run() {
        for (const CatalogueEntry& entry : catalogue.entries) {
            if (told >= mostTold) break;
            if (!entry.isObsolete) CheckEntry(entry);
        }
        for (const auto& [line, text] : file.emptyLines) {
            if (told >= mostTold) break;
            CheckReplaced(line, text);
        }
        for (const ShownText& shown : AllShownTexts())
            CheckText(shown);
    }

private:
    void CheckEntry(const CatalogueEntry& entry) {
        const ShownText* const shown = FindShownText(entry.text);
        if (shown == nullptr) return TellUnknown(entry);
        if (IsTitle(*shown)) return;
        const CatalogueEntry* const used = entry.text == shown->text ? &entry : FindInPlaceOf(entry.text);
        if (used != &entry) return TellNeverUsed(entry, *used);
        if (file.emptyLines.contains(entry.line) ||
            (!entry.translation.empty() && IsBlank(entry.translation)))
            TellEmpty(entry.line, entry.text);
        else if (entry.translation.empty() || IsMarkOfNone(entry.translation))
            Tell(entry, Quoted(entry.text) + " is not translated yet");
        else if (entry.isFuzzy)
            Tell(entry, "the translation of " + Quoted(entry.text) +
                            " is a guess; confirm it by removing 'fuzzy' from the line of its flags");
    }

    /* An empty translation of a text that another line translates. */
    void CheckReplaced(size_t line, const WideString& text) {
        const ShownText* const shown = FindShownText(text);
        if (shown == nullptr || IsTitle(*shown)) return;
        const CatalogueEntry* const entry = catalogue.Find(text);
        if (entry != nullptr && entry->line != line) TellEmpty(line, text);
    }

    void TellEmpty(size_t line, WideStringView text) {
        Tell(line, "the translation of " + Quoted(text) + " is empty; write one, or XXXX for none yet");
    }

    /* The entry that the library finds in place of the one for `plain`, a text without ornaments: that one,
     * if it finds it for some text. */
    [[nodiscard]] const CatalogueEntry* FindInPlaceOf(const WideString& plain) const {
        const CatalogueEntry* found = nullptr;
        for (const ShownText& shown : AllShownTexts()) {
            if (WithoutOrnaments(shown.text) != plain) continue;
            found = Find(shown);
            if (found != nullptr && found->text == plain) break;
        }
        return found;
    }

    void TellNeverUsed(const CatalogueEntry& entry, const CatalogueEntry& used) {
        Tell(entry, Quoted(entry.text) + " is never looked up, because line " + std::to_string(used.line) +
                        " translates " + Quoted(used.text) + "; remove it");
    }

    void TellUnknown(const CatalogueEntry& entry) {
        const ShownText* const similar = told < mostSimilar ? FindSimilarText(entry.text) : nullptr;
        Tell(entry, Quoted(WithVisibleBlanks(entry.text)) + " is no text of " + NameOfVersion() +
                        (similar ? "; did you mean " + QuotedWhole(similar->text) + "?" : "; remove it"));
    }

    void CheckText(const ShownText& shown) {
        if (IsTitle(shown)) return;
        const CatalogueEntry* const entry = Find(shown);
        if (entry == nullptr) return TellMissing(shown);
        if (!IsTranslation(entry->translation)) return;
        CheckPlaceholders(shown, *entry);
        CheckAccessKeys(shown, *entry);
        CheckNames(shown, *entry);
        CheckCharacters(shown, *entry);
        for (const TextPlace& place : shown.places)
            CheckRoom(place, shown, *entry);
    }

    /* As the library does it. */
    [[nodiscard]] const CatalogueEntry* Find(const ShownText& shown) const {
        const CatalogueEntry* const exactly = catalogue.Find(shown.text);
        return exactly != nullptr ? exactly : catalogue.Find(WithoutOrnaments(shown.text));
    }

    void TellMissing(const ShownText& shown) {
        Complain(complaints, file.lastLine,
                 "the text " + Quoted(shown.text) + " is missing (" + PlaceText(shown.places.front()) + ")");
    }

    void CheckPlaceholders(const ShownText& shown, const CatalogueEntry& entry) {
        if (!shown.isFormat || ReadsArgumentsOf(shown.text, entry.translation.c_str())) return;
        Tell(entry, "the placeholders of " + Quoted(shown.text) + " are " +
                        ListOf(FindPlaceholders(shown.text)) + ", those of the translation " +
                        ListOf(FindPlaceholders(entry.translation)) + ": it would not be shown");
    }

    /* A record without ornaments may serve several texts, so it needs no key of its own. */
    void CheckAccessKeys(const ShownText& shown, const CatalogueEntry& entry) {
        const auto hasKey = [](const TextPlace& place) { return HasAccessKeys(place.kind); };
        if (std::ranges::none_of(shown.places, hasKey)) return CheckDoubledMarks(shown, entry);
        const size_t wanted = CountAccessKeys(shown.text);
        const size_t count = CountAccessKeys(entry.translation);
        if (count == wanted || (count == 0 && entry.text != shown.text)) return;
        if (wanted == 0)
            Tell(entry,
                 "the & in " + Quoted(entry.translation) +
                     " is taken for the mark of an access key, and the text has none; write && for an & to "
                     "be seen");
        else if (count == 0)
            Tell(entry, "the access key is lost: write & before a letter, as in " + Quoted(shown.text));
        else
            Tell(entry, "more than one & underlines a letter; " + Quoted(shown.text) + " has one");
    }

    void CheckDoubledMarks(const ShownText& shown, const CatalogueEntry& entry) {
        const auto hasTwo = [](WideStringView text) { return text.find(u"&&") != WideStringView::npos; };
        if (hasTwo(entry.translation) && !hasTwo(shown.text))
            Tell(entry, "the user would see both & of " + Quoted(entry.translation) + "; " +
                            OwnerOfRoom(shown.places.front()) + " has no access keys, so write one &");
    }

    void CheckCharacters(const ShownText& shown, const CatalogueEntry& entry) {
        if (file.isGuess) return;
        for (std::string& sentence : TellCharacters(shown.text, entry.translation))
            Tell(entry, std::move(sentence));
    }

    void CheckNames(const ShownText& shown, const CatalogueEntry& entry) {
        for (const Mention& mention : FindMentions(shown.text)) {
            const CatalogueEntry* const name = Find(*mention.name);
            if (name == nullptr || !IsTranslation(name->translation)) continue;
            if (Drawn(entry).find(Drawn(*name)) != WideString::npos) continue;
            Tell(entry, "the text mentions " + Quoted(mention.name->text) + ", which is translated as " +
                            Quoted(name->translation) + ": the translation has to use that name");
        }
    }

    static WideString Drawn(const CatalogueEntry& entry) {
        return WithoutAccessKeys(AsWritten(entry.translation));
    }

    void CheckRoom(const TextPlace& place, const ShownText& shown, const CatalogueEntry& entry) {
        const WideString written = AsWritten(entry.translation);
        const TextRoom room = RoomAt(place);
        const bool hasBreak = entry.translation.find(u'\n') != WideString::npos;
        if (hasBreak && room.lines == 1 && WideStringView(shown.text).find(u'\n') == WideStringView::npos)
            return Tell(entry,
                        "the translation has a line break, and " + OwnerOfRoom(place) + " has one line");
        if (Fits(place, written)) return;
        const TextRoom needed = NeededRoom(place, written);
        const bool isTooWide = needed.width > room.width;
        const std::string line = isTooWide && room.lines > 1 ? " in a line" : "";
        const std::string has =
            isTooWide ? std::to_string(room.width) + line
                      : std::to_string(room.lines) + " of " + std::to_string(room.width) + " pixels";
        Tell(entry, Quoted(written) + " needs " +
                        (isTooWide ? std::to_string(needed.width) + " pixels" + line
                                   : std::to_string(needed.lines) + " lines") +
                        ", " + OwnerOfRoom(place) + " has " + has);
    }

    /* Once a line: a text may be shown in several places. */
    void Tell(const CatalogueEntry& entry, std::string sentence) { Tell(entry.line, std::move(sentence)); }

    void Tell(size_t line, std::string sentence) {
        ++told;
        const auto isSame = [&](const Complaint& other) {
            return other.line == line && other.sentence == sentence;
        };
        if (std::ranges::none_of(complaints, isSame)) Complain(complaints, line, std::move(sentence));
    }

    const CheckedFile& file;
    const Catalogue& catalogue;
    Complaints& complaints;
    size_t told = 0;
};

}  // namespace

void CheckTexts(const CheckedFile& file, Complaints& complaints) {
    TextCheck(file, complaints).Run();
}
