#!/usr/bin/python3
"""Makes WidthsOfTahoma.h from the font that Debian's package fonts-wine has (needs python3-fonttools):

    translation/texts/tahoma_widths.py >translation/texts/WidthsOfTahoma.h
"""
from fontTools.ttLib import TTFont

FONT = "/usr/share/wine/fonts/tahoma.ttf"
PIXELS = 11  # an em of 8 points at 96 dpi: MulDiv(8, 96, 72)
DIGITS = "0123456789abcdefghijklmnopqrstuvwxyz"

HEADER = """\
/* How wide the characters of Tahoma, 8 points at 96 dpi, are: the font of the dialogs on a handheld, whose em
 * has {pixels} pixels then.
 *
 * The numbers are those of tahoma.ttf in Debian's package fonts-wine, which was made with the widths of the
 * handheld's font: of its bitmaps of {0} pixels an em, and where it has none its outlines' scaled and rounded
 * advances. On Windows, GetGlyphOutlineW tells the bitmaps' with GGO_BITMAP (gmCellIncX); what
 * GetCharWidth32W tells under Wine are the advances of hinted outlines, which nobody's handheld has.
 * tahoma_widths.py makes this file. */
#pragma once

#include <algorithm>
#include <iterator>

struct TahomaRange {{
    char16_t first;
    char16_t last;
    bool isBitmap;      /* the widths are those of bitmaps */
    const char* widths; /* one digit a character: 0 to 9, and a to z for 10 to 35 */
}};

inline constexpr int emOfTahoma = {pixels};
inline constexpr int heightOfTahoma = {height}; /* of a line */

inline constexpr TahomaRange widthsOfTahoma[] = {{
{ranges}
}};

/* In pixels; -1: the font does not have the character. */
constexpr int WidthInTahoma(char16_t unit) {{
    const auto* const range =
        std::ranges::lower_bound(widthsOfTahoma, unit, std::ranges::less(), &TahomaRange::last);
    if (range == std::end(widthsOfTahoma) || unit < range->first) return -1;
    const char digit = range->widths[unit - range->first];
    return digit <= '9' ? digit - '0' : digit - 'a' + 10;
}}
"""


def advances(font):
    """(character, advance, whether a bitmap has it), in the order of characters."""
    strikes = [strike.bitmapSizeTable.ppemX for strike in font["EBLC"].strikes]
    bitmaps = font["EBDT"].strikeData[strikes.index(PIXELS)]
    for character, glyph in sorted(font.getBestCmap().items()):
        if glyph in bitmaps:
            yield character, bitmaps[glyph].metrics.Advance, True
        else:
            advance = font["hmtx"].metrics[glyph][0]
            yield character, int(advance * PIXELS / font["head"].unitsPerEm + 0.5), False


def main():
    font = TTFont(FONT)
    ranges = []
    for character, advance, is_bitmap in advances(font):
        new = not ranges or ranges[-1][1] != character - 1 or ranges[-1][2] != is_bitmap
        if new or len(ranges[-1][3]) == 64:
            ranges.append([character, character, is_bitmap, ""])
        ranges[-1][1] = character
        ranges[-1][3] += DIGITS[advance]
    lines = [f'    {{0x{first:04X}, 0x{last:04X}, {"true" if is_bitmap else "false"}, "{widths}"}},'
             for first, last, is_bitmap, widths in ranges]
    above, below = font["VDMX"].groups[0][PIXELS]
    print(HEADER.format(PIXELS, pixels=PIXELS, height=above - below, ranges="\n".join(lines)), end="")


main()
