#include "check/TakenForBytes.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "Utf16.h"
#include "files/Utf8.h"
#include "texts/Compositions.h"

namespace {

/* What the bytes 80 to 9F are on Windows; 0: the byte's own number. */
constexpr WCHAR windowsCharacters[] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                       0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

/* The byte that is taken for `unit`, or -1. */
int ByteOf(WCHAR unit) {
    if (unit < 0x100) return unit;
    const auto* const found = std::ranges::find(windowsCharacters, unit);
    return found == std::end(windowsCharacters) ? -1 : 0x80 + static_cast<int>(found - windowsCharacters);
}

/* The text whose UTF-8, byte by byte, `text` is; empty when it is no such thing. */
WideString TextOfBytes(WideStringView text) {
    std::string bytes;
    for (const WCHAR unit : text) {
        const int byte = ByteOf(unit);
        if (byte < 0) return {};
        bytes += static_cast<char>(byte);
    }
    return !IsAscii(bytes) && IsUtf8(bytes) ? Utf16Of(bytes) : WideString();
}

bool IsCapital(WCHAR unit) {
    return unit >= u'A' && unit <= u'Z';
}

bool IsLatinLetter(WCHAR unit) {
    return IsCapital(unit) || (unit >= u'a' && unit <= u'z');
}

/* Those beyond U+017F that languages write: of Vietnamese, Azerbaijani and Romanian. */
bool IsUsualLatin(WCHAR unit) {
    constexpr WideStringView usual = u"\x18F\x1A0\x1A1\x1AF\x1B0\x218\x219\x21A\x21B\x259";
    return unit < 0x180 || usual.find(unit) != WideStringView::npos;
}

/* Whether the bytes of `unit` end as an ellipsis or a no-break space, and begin as a capital other than Â. */
bool IsCapitalBeforeBlank(WCHAR unit) {
    return unit >= 0xC0 && unit < 0x180 && ((unit & 0x3F) == 0x05 || (unit & 0x3F) == 0x20);
}

/* Whether the character there is one that its neighbours make likely. What capitals and signs behind them
 * would be as bytes are letters of hardly any language (IPA, Syriac), or of another script amid a word. */
bool IsLikely(WideStringView text, size_t at) {
    const WCHAR unit = text[at];
    const WCHAR before = at > 0 ? text[at - 1] : WCHAR{0};
    const WCHAR after = at + 1 < text.size() ? text[at + 1] : WCHAR{0};
    if (unit < 0x80) return false;
    if (unit < 0x300)
        return IsUsualLatin(unit) &&
               !(IsCapitalBeforeBlank(unit) && IsCapital(before) && !IsLatinLetter(after));
    if (unit >= 0x1E00 && unit < 0x2200) return true;  // more Latin and Greek letters, dashes, signs
    if (IsAccent(unit) || (unit >= 0x700 && unit < 0x900)) return false;
    return !IsLatinLetter(before) && !IsLatinLetter(after);
}

}  // namespace

WideString TextTakenForBytes(WideStringView text) {
    WideString meant = TextOfBytes(text);
    const WideString composed = ComposedText(meant);
    for (size_t at = 0; at < composed.size(); ++at)
        if (IsLikely(composed, at)) return meant;
    return {};
}
