/* How wide the characters of Tahoma, 8 points at 96 dpi, are: the font of the dialogs on a handheld, whose em
 * has 11 pixels then.
 *
 * The numbers are those of tahoma.ttf in Debian's package fonts-wine, which was made with the widths of the
 * handheld's font: of its bitmaps of 11 pixels an em, and where it has none its outlines' scaled and rounded
 * advances. On Windows, GetGlyphOutlineW tells the bitmaps' with GGO_BITMAP (gmCellIncX); what
 * GetCharWidth32W tells under Wine are the advances of hinted outlines, which nobody's handheld has.
 * tahoma_widths.py makes this file. */
#pragma once

#include <algorithm>
#include <iterator>

struct TahomaRange {
    char16_t first;
    char16_t last;
    bool isBitmap;      /* the widths are those of bitmaps */
    const char* widths; /* one digit a character: 0 to 9, and a to z for 10 to 35 */
};

inline constexpr int emOfTahoma = 11;
inline constexpr int heightOfTahoma = 13; /* of a line */

inline constexpr TahomaRange widthsOfTahoma[] = {
    {0x0020, 0x0020, false, "3"},
    {0x0021, 0x0060, true, "4486b72446844446666666666448885a7677667745658786876676a666444866"},
    {0x0061, 0x007F, true, "665664662352866664546686655458b"},
    {0x00A0, 0x00DF, true, "346666466a5684a6585566646556bbb5777777a7666644448788888887777666"},
    {0x00E0, 0x011F, true, "666666a566662222666666686666666676767675757575787666666666667676"},
    {0x0120, 0x0131, true, "767676764343434343"},
    {0x0139, 0x013A, true, "53"},
    {0x013D, 0x013E, true, "53"},
    {0x0141, 0x0144, true, "7376"},
    {0x0147, 0x0148, true, "76"},
    {0x0150, 0x0155, true, "86ba74"},
    {0x0158, 0x015B, true, "7465"},
    {0x015E, 0x0165, true, "65656464"},
    {0x016A, 0x016B, true, "76"},
    {0x016E, 0x0173, true, "767676"},
    {0x0178, 0x017E, true, "6656565"},
    {0x0192, 0x0192, true, "6"},
    {0x01A0, 0x01A0, true, "a"},
    {0x0218, 0x021B, true, "6564"},
    {0x02C6, 0x02C7, true, "66"},
    {0x02C9, 0x02C9, true, "6"},
    {0x02D8, 0x02DD, true, "666666"},
    {0x0326, 0x0326, true, "6"},
    {0x03C0, 0x03C0, true, "6"},
    {0x0400, 0x0401, true, "66"},
    {0x0403, 0x0408, true, "676445"},
    {0x040C, 0x040E, true, "776"},
    {0x0410, 0x044F, true, "766686a67767878767668687ab8967a766656685665676666556866699686586"},
    {0x0450, 0x0451, true, "66"},
    {0x0453, 0x0458, true, "555333"},
    {0x045C, 0x045E, true, "566"},
    {0x0490, 0x0493, true, "6565"},
    {0x049A, 0x049B, true, "65"},
    {0x04A2, 0x04A3, true, "76"},
    {0x04AE, 0x04B1, true, "6666"},
    {0x04BA, 0x04BB, true, "66"},
    {0x04D8, 0x04D9, true, "75"},
    {0x04E8, 0x04E9, true, "86"},
    {0x0606, 0x060A, false, "77b8b"},
    {0x060C, 0x060C, false, "4"},
    {0x0615, 0x0615, false, "0"},
    {0x061B, 0x061B, false, "3"},
    {0x061F, 0x061F, false, "6"},
    {0x0621, 0x063A, false, "5335393a6aa7775555ddddaa77"},
    {0x0640, 0x0655, false, "3b99878659900000000000"},
    {0x0657, 0x0657, false, "0"},
    {0x065A, 0x065A, false, "6"},
    {0x0660, 0x0670, false, "66666666666436a90"},
    {0x0674, 0x0674, false, "3"},
    {0x0679, 0x06B8, false, "aaaaaaaa7777777555555555555676555ddddda7bbbbbb99aca999aaaaaa8888"},
    {0x06B9, 0x06BF, false, "8888887"},
    {0x06C6, 0x06C6, false, "5"},
    {0x06CC, 0x06CC, false, "9"},
    {0x06CE, 0x06CE, false, "9"},
    {0x06D5, 0x06D5, false, "6"},
    {0x06F0, 0x06F9, false, "6666666666"},
    {0x2013, 0x2014, true, "6a"},
    {0x2018, 0x201A, true, "222"},
    {0x201C, 0x201E, true, "444"},
    {0x2020, 0x2022, true, "665"},
    {0x2026, 0x2026, true, "9"},
    {0x2030, 0x2030, true, "f"},
    {0x2039, 0x203A, true, "44"},
    {0x20AC, 0x20AC, true, "6"},
    {0x2116, 0x2116, true, "7"},
    {0x2122, 0x2122, true, "a"},
    {0x2126, 0x2126, true, "8"},
    {0x215B, 0x215E, true, "bbb6"},
    {0x2202, 0x2202, true, "6"},
    {0x2206, 0x2206, true, "7"},
    {0x220F, 0x220F, true, "7"},
    {0x2211, 0x2212, true, "78"},
    {0x2215, 0x2215, true, "4"},
    {0x2219, 0x221A, true, "38"},
    {0x221E, 0x221E, true, "a"},
    {0x222B, 0x222B, true, "6"},
    {0x2248, 0x2248, true, "8"},
    {0x2260, 0x2260, true, "8"},
    {0x2264, 0x2265, true, "88"},
    {0x25CA, 0x25CA, true, "8"},
    {0xFB01, 0xFB02, true, "66"},
    {0xFB52, 0xFB91, false, "ab33ab33ab33ab33ab33ab33bb56bb567777777777777777565656565656aa56"},
    {0xFB92, 0xFBA3, false, "aa56aa56aa56888833"},
    {0xFBAA, 0xFBAD, false, "8765"},
    {0xFBD3, 0xFBD6, false, "9956"},
    {0xFBD9, 0xFBDA, false, "56"},
    {0xFBE8, 0xFBE9, false, "33"},
    {0xFBFC, 0xFBFF, false, "9933"},
    {0xFE70, 0xFE74, false, "33333"},
    {0xFE76, 0xFEB5, false, "3333333333533335633993333ab3366ab33ab3377777777777756565656de9ad"},
    {0xFEB6, 0xFEF5, false, "e9add9add9aaa99aa9976757665bb56995699568834776688336665569999336"},
    {0xFEF6, 0xFEFC, false, "7676767"},
};

/* In pixels; -1: the font does not have the character. */
constexpr int WidthInTahoma(char16_t unit) {
    const auto* const range =
        std::ranges::lower_bound(widthsOfTahoma, unit, std::ranges::less(), &TahomaRange::last);
    if (range == std::end(widthsOfTahoma) || unit < range->first) return -1;
    const char digit = range->widths[unit - range->first];
    return digit <= '9' ? digit - '0' : digit - 'a' + 10;
}
