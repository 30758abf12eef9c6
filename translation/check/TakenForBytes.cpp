#include "check/TakenForBytes.h"

#include <string>

#include "Utf16.h"
#include "files/Utf8.h"
#include "texts/Compositions.h"

namespace {

/* What the bytes 80 to FF are on the Windows of Western and of Central Europe, with Cyrillic and with Greek
 * letters; U+FFFD: nothing. */
constexpr WideStringView codePages[] = {
    u"€\uFFFD‚ƒ„…†‡ˆ‰Š‹Œ\uFFFDŽ\uFFFD\uFFFD‘’“”•–—˜™š›œ\uFFFDžŸ\u00A0¡¢£¤¥¦§¨©ª«¬\u00AD®¯°±²³´µ¶·¸"
    u"¹º»¼½¾¿ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖ×ØÙÚÛÜÝÞßàáâãäåæçèéêëìíîïðñòóôõö÷øùúûüýþÿ",
    u"€\uFFFD‚\uFFFD„…†‡\uFFFD‰Š‹ŚŤŽŹ\uFFFD‘’“”•–—\uFFFD™š›śťžź\u00A0ˇ˘Ł¤Ą¦§¨©Ş«¬\u00AD®Ż°±˛ł´µ¶·¸"
    u"ąş»Ľ˝ľżŔÁÂĂÄĹĆÇČÉĘËĚÍÎĎĐŃŇÓÔŐÖ×ŘŮÚŰÜÝŢßŕáâăäĺćçčéęëěíîďđńňóôőö÷řůúűüýţ˙",
    u"ЂЃ‚ѓ„…†‡€‰Љ‹ЊЌЋЏђ‘’“”•–—\uFFFD™љ›њќћџ\u00A0ЎўЈ¤Ґ¦§Ё©Є«¬\u00AD®Ї°±Ііґµ¶·ё№є»јЅѕїАБВГДЕЖЗИЙКЛМ"
    u"НОПРСТУФХЦЧШЩЪЫЬЭЮЯабвгдежзийклмнопрстуфхцчшщъыьэюя",
    u"€\uFFFD‚ƒ„…†‡\uFFFD‰\uFFFD‹\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD‘’“”•–—\uFFFD™\uFFFD›\uFFFD\uFFFD"
    u"\uFFFD\uFFFD\u00A0΅Ά£¤¥¦§¨©\uFFFD«¬\u00AD®―°±²³΄µ¶·ΈΉΊ»Ό½ΎΏΐΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡ\uFFFDΣΤΥΦΧΨΩΪΫ"
    u"άέήίΰαβγδεζηθικλμνξοπρςστυφχψωϊϋόύώ\uFFFD"};

/* The byte that is taken for `unit`, or -1. Windows has the characters 80 to 9F for bytes that are none. */
int ByteOf(WCHAR unit, WideStringView codePage) {
    if (unit < 0xA0) return unit;
    const size_t found = unit == 0xFFFD ? WideStringView::npos : codePage.find(unit);
    return found == WideStringView::npos ? -1 : 0x80 + static_cast<int>(found);
}

/* The text whose UTF-8, byte by byte, `text` is; empty when it is no such thing. */
WideString TextOfBytes(WideStringView text, WideStringView codePage) {
    std::string bytes;
    for (const WCHAR unit : text) {
        const int byte = ByteOf(unit, codePage);
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

/* Whether a character in it is likely. */
bool IsLikelyText(WideStringView text) {
    const WideString composed = ComposedText(text);
    for (size_t at = 0; at < composed.size(); ++at)
        if (IsLikely(composed, at)) return true;
    return false;
}

}  // namespace

WideString TextTakenForBytes(WideStringView text) {
    for (const WideStringView codePage : codePages) {
        WideString meant = TextOfBytes(text, codePage);
        if (IsLikelyText(meant)) return meant;
    }
    return {};
}
