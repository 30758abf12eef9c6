/* A few texts in place of this version's. */
#include <algorithm>

#include "ShownTexts.h"

namespace {

constexpr TextPlace signIn[] = {{TextKind::Label, "Sign in", "src/account/SignIn.cpp:25", 60, 8}};
constexpr TextPlace everywhere[] = {{TextKind::Message, "Everywhere", "src/ui/Boxes.cpp:7", 0, 0},
                                    {TextKind::SoftKey, "Sign in", "src/ui/Boxes.cpp:9", 0, 0}};

constexpr ShownText texts[] = {
    {u"User ID:", false, signIn},
    {u"Press \"I Forgot\".", false, signIn},
    {u"%d maps", true, everywhere},
};

WideString WithoutOrnaments(WideStringView text) {
    WideString plain(text);
    std::erase_if(plain,
                  [](WCHAR unit) { return WideStringView(u"&.:\"").find(unit) != WideStringView::npos; });
    return plain;
}

}  // namespace

std::span<const ShownText> AllShownTexts() {
    return texts;
}

const ShownText* FindShownText(WideStringView text) {
    const auto* const found = std::ranges::find_if(texts, [text](const ShownText& shown) {
        return text == shown.text || text == WithoutOrnaments(shown.text);
    });
    return found == std::end(texts) ? nullptr : found;
}
