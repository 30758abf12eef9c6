#include "PseudoText.h"

#include <gtest/gtest.h>

namespace {

WideString Pseudo(WideStringView text) {
    return PseudoText(*FindShownText(text));
}

}  // namespace

TEST(PseudoText, IsAccentedInBrackets) {
    EXPECT_EQ(u"[M\u00E9\u00F1\u00FC]", Pseudo(u"Menu"));
}

TEST(PseudoText, IsTwoFifthsLonger) {
    for (const WideStringView text : {u"If you have an account", u"Welcome", u"It failed.\nTry again."})
        EXPECT_EQ(text.size() + (text.size() * 2 + 4) / 5, Pseudo(text).size());
}

TEST(PseudoText, KeepsPlaceholdersAndLineBreaks) {
    EXPECT_EQ(0U, Pseudo(u"%d maps").find(u"[%d m\u00E5"));
    const WideString lines = Pseudo(u"It failed.\nTry again.");
    EXPECT_NE(WideString::npos, lines.find(u".\nTr\u00FD"));
}

TEST(PseudoText, KeepsOrnaments) {
    EXPECT_EQ(u"[&\u00D6p\u00E9\u00E9\u00F1...\u00E9]", Pseudo(u"&Open..."));
}

TEST(PseudoText, MentionsNamesAsTheyAreTranslated) {
    EXPECT_NE(WideString::npos, Pseudo(u"Press \"I Forgot\".").find(Pseudo(u"Forgot") + u"\""));
    EXPECT_NE(WideString::npos,
              Pseudo(u"Select Menu / New Account").find(Pseudo(u"Menu") + u" / " + Pseudo(u"New Account")));
}

TEST(PseudoText, IsLatin1) {
    for (const ShownText& shown : AllShownTexts()) {
        for (const WCHAR unit : PseudoText(shown))
            EXPECT_LT(unit, 0x100);
    }
}
