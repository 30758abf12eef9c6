#include "check/Mentions.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<WideString> Mentioned(WideStringView text) {
    std::vector<WideString> names;
    for (const Mention& mention : FindMentions(text)) {
        EXPECT_EQ(WideStringView(mention.name->text),
                  text.substr(mention.begin).substr(0, WideStringView(mention.name->text).size()));
        names.emplace_back(mention.name->text);
    }
    return names;
}

}  // namespace

TEST(Mentions, StandInQuotes) {
    EXPECT_THAT(Mentioned(u"Press \"Menu\" and \"I Forgot\"."), ElementsAre(u"Menu", u"Forgot"));
    EXPECT_THAT(Mentioned(u"The \"site\" has a Menu, the \"other\" one, too"), IsEmpty());
    EXPECT_THAT(Mentioned(u"an open \" and Menu"), IsEmpty());
}

TEST(Mentions, StandInPaths) {
    EXPECT_THAT(Mentioned(u"Select Menu / Forgot"), ElementsAre(u"Menu", u"Forgot"));
    EXPECT_THAT(Mentioned(u"Menu/Forgot"), IsEmpty());
}

TEST(Mentions, AreWholeWords) {
    EXPECT_THAT(Mentioned(u"\"Menus\" \"Forgotten\" \"xMenu\""), IsEmpty());
}

TEST(Mentions, AreTheLongestNames) {
    EXPECT_THAT(Mentioned(u"\"New Account\""), ElementsAre(u"New Account"));
    EXPECT_THAT(Mentioned(u"\"Account\", \"New Account\""), ElementsAre(u"Account", u"New Account"));
}

TEST(Mentions, AreNoCaptionsOrLabels) {
    EXPECT_THAT(Mentioned(u"\"Welcome\" \"Save it\""), IsEmpty());
}

TEST(Mentions, ANameDoesNotMentionItself) {
    EXPECT_THAT(Mentioned(u"Menu"), IsEmpty());
}
