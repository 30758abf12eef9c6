#include "check/SimilarText.h"

#include <gtest/gtest.h>

namespace {

WideString Similar(WideStringView text) {
    const ShownText* const found = FindSimilarText(text);
    return found ? found->text : u"none";
}

}  // namespace

TEST(SimilarText, HasFewOtherCharacters) {
    EXPECT_EQ(u"Welcome", Similar(u"welcom"));
    EXPECT_EQ(u"If you have an account", Similar(u"If you've an acount"));
    EXPECT_EQ(u"Menu", Similar(u"Mneu"));
}

TEST(SimilarText, IsTheNearest) {
    EXPECT_EQ(u"Account", Similar(u"Acount"));
    EXPECT_EQ(u"New Account", Similar(u"New Acount"));
}

TEST(SimilarText, IsNoneThatIsAltogetherAnother) {
    EXPECT_EQ(u"none", Similar(u"Quit the program"));
    EXPECT_EQ(u"none", Similar(u"ab"));
    EXPECT_EQ(u"none", Similar(u""));
    EXPECT_EQ(u"none", Similar(WideString(1000000, u'x')));
}
