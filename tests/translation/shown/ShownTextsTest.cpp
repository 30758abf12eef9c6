#include "texts/ShownTexts.h"

#include <gtest/gtest.h>

#include <set>

#include "texts/TextWidth.h"
#include "ui/Ornaments.h"

namespace {

const TextPlace& FirstPlace(WideStringView text) {
    return FindShownText(text)->places.front();
}

}  // namespace

TEST(ShownTexts, AreDifferentAndHavePlaces) {
    std::set<WideString> texts;
    for (const ShownText& shown : AllShownTexts()) {
        EXPECT_TRUE(texts.insert(shown.text).second);
        EXPECT_FALSE(shown.places.empty());
    }
    EXPECT_EQ(33U, texts.size());
}

TEST(ShownTexts, AreFoundExactlyOrWithoutOrnaments) {
    EXPECT_EQ(WideStringView(u"New Users:"), FindShownText(u"New Users:")->text);
    EXPECT_EQ(WideStringView(u"New Users:"), FindShownText(u"New Users")->text);
    EXPECT_EQ(WideStringView(u"You must provide a valid email address."),
              FindShownText(u"You must provide a valid email address")->text);
    EXPECT_EQ(nullptr, FindShownText(u"New Users."));
    EXPECT_EQ(nullptr, FindShownText(u"new users:"));
    EXPECT_EQ(nullptr, FindShownText(u""));
}

TEST(ShownTexts, ComeInTheOrderOfTheScreens) {
    std::vector<std::string> screens;
    for (const ShownText& shown : AllShownTexts()) {
        const std::string screen = shown.places.front().screen;
        if (screens.empty() || screens.back() != screen) screens.push_back(screen);
    }
    EXPECT_EQ((std::vector<std::string>{"Everywhere", "Sign in", "Create account"}), screens);
}

TEST(ShownTexts, KnowTheirPlaces) {
    EXPECT_EQ(TextKind::Title, FirstPlace(u"Orvande Online").kind);
    EXPECT_EQ(TextKind::Caption, FirstPlace(u"Create Account").kind);
    EXPECT_EQ(TextKind::CheckBox, FirstPlace(u"Save password").kind);
    EXPECT_EQ(65, FirstPlace(u"Save password").width);
    EXPECT_EQ(10, FirstPlace(u"Save password").height);
    EXPECT_EQ(TextKind::SoftKey, FirstPlace(u"Done").kind);
    EXPECT_EQ(TextKind::MenuItem, FirstPlace(u"New Account").kind);
    EXPECT_EQ(TextKind::Message, FirstPlace(u"Internal server error").kind);
    EXPECT_EQ(2U, FindShownText(u"User ID")->places.size());
}

TEST(ShownTexts, KnowWhichAreFilledIn) {
    for (const ShownText& shown : AllShownTexts())
        EXPECT_EQ(shown.text == WideStringView(u"The server returned error code %d"), shown.isFormat);
}

TEST(ShownTexts, FitInEnglish) {
    for (const ShownText& shown : AllShownTexts()) {
        for (const TextPlace& place : shown.places)
            EXPECT_TRUE(Fits(place, shown.text)) << place.source;
    }
}
