#include "texts/ShownTexts.h"

#include <algorithm>

#include "ui/Ornaments.h"

const ShownText* FindShownText(WideStringView text) {
    const std::span<const ShownText> texts = AllShownTexts();
    const auto exactly = std::ranges::find(texts, text, &ShownText::text);
    if (exactly != texts.end()) return &*exactly;
    if (std::ranges::any_of(text, IsOrnament)) return nullptr;
    const auto found = std::ranges::find_if(
        texts, [text](const ShownText& shown) { return WithoutOrnaments(shown.text) == text; });
    return found != texts.end() ? &*found : nullptr;
}
