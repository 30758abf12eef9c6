#include "check/CharacterCheck.h"

#include <algorithm>
#include <cstdio>

#include "check/TakenForBytes.h"
#include "files/Quoted.h"
#include "texts/Compositions.h"

namespace {

std::string NumberOf(WCHAR unit) {
    char number[8] = {};
    std::snprintf(number, sizeof(number), "U+%04X", static_cast<unsigned>(unit));
    return number;
}

/* The first letter with an accent behind it, and all its accents. */
WideStringView FirstAccented(WideStringView text) {
    const auto* const accent = std::ranges::find_if(text, IsAccent);
    if (accent == text.end()) return {};
    const auto* const letter = accent == text.begin() ? accent : accent - 1;
    return {letter, std::find_if_not(accent, text.end(), IsAccent)};
}

std::string AboutAccent(WideStringView accented) {
    const WideString composed = ComposedText(accented);
    const std::string beginning = "the accent of " + Quoted(accented) +
                                  " is a character of its own, which a handheld shows beside the letter; ";
    if (composed.size() > 1 || IsAccent(composed[0]))
        return beginning + "no character is both, so write another";
    return beginning + "write both as one, " + NumberOf(composed[0]);
}

/* Those that control something, stand for what another program could not read, or are half of a pair. Line
 * breaks and TABs have their meaning, CR and NUL are told of their line, and which direction letters have,
 * whether they are joined, and where a word ends, some languages need to say. */
bool IsUnreadable(WideStringView text, size_t at) {
    const WCHAR unit = text[at];
    if (unit < 0x20) return unit != 0 && unit != u'\t' && unit != u'\n' && unit != u'\r';
    if (unit >= 0xDC00 && unit < 0xE000) return at == 0 || text[at - 1] < 0xD800 || text[at - 1] >= 0xDC00;
    if (unit >= 0xD800 && unit < 0xDC00)
        return at + 1 == text.size() || text[at + 1] < 0xDC00 || text[at + 1] >= 0xE000;
    return (unit >= 0x7F && unit < 0xA0) || unit == 0xAD || unit == 0x2028 || unit == 0x2029 ||
           unit == 0x2060 || unit == 0xFEFF || unit >= 0xFFF9;
}

std::string AboutUnreadable(WideStringView translation) {
    for (size_t at = 0; at < translation.size(); ++at) {
        if (IsUnreadable(translation, at))
            return "the character " + NumberOf(translation[at]) + " in " + Quoted(translation) +
                   " is none to be read; delete it, or write what is meant";
    }
    return {};
}

/* Blanks of other widths, which editors insert by themselves and the handheld's font does not have. */
std::string AboutBlank(WideStringView translation) {
    const auto* const blank = std::ranges::find_if(translation, [](WCHAR unit) {
        return (unit >= 0x2000 && unit <= 0x200A) || unit == 0x202F || unit == 0x205F;
    });
    if (blank == translation.end()) return {};
    return "a handheld's font lacks the blank " + NumberOf(*blank) +
           "; write the no-break space, U+00A0, or a space";
}

}  // namespace

std::vector<std::string> TellCharacters(WideStringView text, WideStringView translation) {
    const WideString meant = TextTakenForBytes(translation);
    if (!meant.empty())
        return {"another program has made " + Quoted(translation) + " of " + Quoted(meant) +
                ", whose UTF-8 it took for single bytes; write that"};
    std::vector<std::string> told;
    const WideStringView accented = FirstAccented(translation);
    if (!accented.empty()) told.push_back(AboutAccent(accented));
    const std::string unreadable = AboutUnreadable(translation);
    if (!unreadable.empty()) told.push_back(unreadable);
    const std::string blank = AboutBlank(translation);
    if (!blank.empty()) told.push_back(blank);
    if (translation.find(u'\\') != WideStringView::npos && text.find(u'\\') == WideStringView::npos)
        told.emplace_back(
            "the user would see a backslash; a line break is one backslash and n, nothing else "
            "needs one");
    return told;
}

WideString AsWritten(WideStringView translation) {
    const WideStringView text = translation.substr(0, translation.find_last_not_of(u'\t') + 1);
    const WideString meant = TextTakenForBytes(text);
    return ComposedText(meant.empty() ? text : WideStringView(meant));
}
