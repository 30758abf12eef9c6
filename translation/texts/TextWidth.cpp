#include "texts/TextWidth.h"

#include <algorithm>
#include <span>

#include "texts/WidthsOfTahoma.h"

namespace {

constexpr int screenWidth = 176;
constexpr int screenHeight = 220;
constexpr int messageWidth = 160;
constexpr int messageFrame = 24 + 36 + 4;
constexpr int checkMark = 13 + 3;

constexpr int SumOfWidths(char16_t first, char16_t last) {
    int sum = 0;
    for (char16_t unit = first; unit <= last; ++unit)
        sum += WidthInTahoma(unit);
    return sum;
}

/* The width of an average character, as Windows rounds it. */
constexpr int baseWidth = ((SumOfWidths(u'A', u'Z') + SumOfWidths(u'a', u'z')) / 26 + 1) / 2;

/* As MulDiv, which rounds. */
constexpr int Scaled(int units, int pixels, int perUnits) {
    return (units * pixels + perUnits / 2) / perUnits;
}

struct UnitRange {
    WCHAR first;
    WCHAR last;
};

bool IsIn(std::span<const UnitRange> ranges, WCHAR unit) {
    return std::ranges::any_of(
        ranges, [unit](const UnitRange& range) { return unit >= range.first && unit <= range.last; });
}

/* Accents that stand over the letter before, and the second halves of pairs. */
constexpr UnitRange withoutWidth[] = {{0x0300, 0x036F}, {0x200B, 0x200F}, {0xDC00, 0xDFFF}};

/* The scripts of East Asia, and the first halves of pairs. */
constexpr UnitRange asWideAsHigh[] = {{0x1100, 0x115F}, {0x2E80, 0xDBFF}, {0xF900, 0xFAFF},
                                      {0xFE30, 0xFE6F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}};

int WidthOfUnit(WCHAR unit) {
    const int width = WidthInTahoma(static_cast<char16_t>(unit));
    if (width >= 0) return width;
    if (IsIn(withoutWidth, unit)) return 0;
    return IsIn(asWideAsHigh, unit) ? emOfTahoma : baseWidth;
}

/* The lines of one paragraph. Spaces at the end of a line take no room. */
TextRoom BrokenParagraph(WideStringView text, int width) {
    TextRoom needed{0, 1};
    WideString line;
    while (!text.empty()) {
        const size_t end = std::min(text.find(TEXT(' ')), text.size());
        const WideStringView word = text.substr(0, end);
        if (!line.empty() && WidthOf(WideString(line).append(word)) > width) {
            ++needed.lines;
            line.clear();
        }
        line += word;
        needed.width = std::max(needed.width, WidthOf(line));
        const size_t next = std::min(text.find_first_not_of(TEXT(' '), end), text.size());
        line += text.substr(end, next - end);
        text.remove_prefix(next);
    }
    return needed;
}

TextRoom BrokenText(WideStringView text, int width) {
    TextRoom needed{0, 0};
    while (true) {
        const size_t end = std::min(text.find(TEXT('\n')), text.size());
        const WideStringView paragraph = text.substr(0, end);
        const TextRoom part = width > 0 ? BrokenParagraph(paragraph, width) : TextRoom{WidthOf(paragraph), 1};
        needed = {std::max(needed.width, part.width), needed.lines + part.lines};
        if (end == text.size()) return needed;
        text.remove_prefix(end + 1);
    }
}

}  // namespace

int WidthOf(WideStringView text) {
    int width = 0;
    for (const WCHAR unit : text)
        width += WidthOfUnit(unit);
    return width;
}

WideString WithoutAccessKeys(WideStringView text) {
    WideString drawn;
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] == TEXT('&') && ++at == text.size()) break;
        drawn += text[at];
    }
    return drawn;
}

bool HasAccessKeys(TextKind kind) {
    return kind != TextKind::Title && kind != TextKind::Caption && kind != TextKind::Message;
}

TextRoom RoomAt(const TextPlace& place) {
    const int lines = std::max(Scaled(place.height, heightOfTahoma, 8) / heightOfTahoma, 1);
    switch (place.kind) {
        case TextKind::Label:
            return {Scaled(place.width, baseWidth, 4), lines};
        case TextKind::CheckBox:
            return {Scaled(place.width, baseWidth, 4) - checkMark, lines};
        case TextKind::Caption:
            return {screenWidth - 8, 1};
        case TextKind::SoftKey:
            return {screenWidth / 2 - 8, 1};
        case TextKind::MenuItem:
            return {screenWidth - 32, 1};
        case TextKind::Message:
            return {messageWidth, (screenHeight - messageFrame) / heightOfTahoma};
        case TextKind::Title:
            break;
    }
    return {0, 1};
}

TextRoom NeededRoom(const TextPlace& place, WideStringView text) {
    const TextRoom room = RoomAt(place);
    const int width = room.lines > 1 ? room.width : 0;
    return HasAccessKeys(place.kind) ? BrokenText(WithoutAccessKeys(text), width) : BrokenText(text, width);
}

bool Fits(const TextPlace& place, WideStringView text) {
    const TextRoom room = RoomAt(place);
    const TextRoom needed = NeededRoom(place, text);
    return (room.width == 0 || needed.width <= room.width) && needed.lines <= room.lines;
}
