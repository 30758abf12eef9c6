/* What `check` says of translations that have no room where they are shown. The widths: W 10, i 2, a blank 3
 * pixels. */
#include "CheckFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class CheckRoom : public CheckFixture {
protected:
    static std::string Wide(size_t count) { return std::string(count, 'W'); }

    /* The longest translation that fits, and what is said of the next longer one. */
    void ExpectLimit(const std::string& text, size_t most, const std::string& sentence) {
        Replace(text, text + "\t" + Wide(most));
        EXPECT_THAT(Check(), IsEmpty());
        const size_t line = Replace(text, text + "\t" + Wide(most + 1));
        EXPECT_THAT(Check(),
                    ElementsAre(Error(line, "'" + Wide(most + 1) + "' needs " +
                                                std::to_string(10 * (most + 1)) + " pixels" + sentence)));
    }
};

}  // namespace

// 60 dialog units of which 4 are 6 pixels.
TEST_F(CheckRoom, LabelsAreAsWideAsTheirControl) {
    ExpectLimit("User ID:", 9, ", its label on the screen 'Sign in' has 90");
}

// 48 dialog units, less 16 pixels.
TEST_F(CheckRoom, CheckBoxesLoseTheirBox) {
    ExpectLimit("Save it", 5, ", its check box on the screen 'Sign in' has 56");
}

// Bold letters are a seventh wider.
TEST_F(CheckRoom, CaptionsAreBoldAndAsWideAsTheScreen) {
    Replace("Welcome", "Welcome\t" + Wide(14));
    EXPECT_THAT(Check(), IsEmpty());
    const size_t line = Replace("Welcome", "Welcome\t" + Wide(14) + "i");
    EXPECT_THAT(Check(), IsEmpty());
    Replace("Welcome", "Welcome\t" + Wide(15));
    EXPECT_THAT(Check(), ElementsAre(Error(line, "'" + Wide(15) +
                                                     "' needs 172 pixels, the caption on a "
                                                     "screen of 176x220 has 168")));
}

TEST_F(CheckRoom, SoftKeysAreHalfAsWideAsTheScreen) {
    ExpectLimit("%d maps", 8, ", a soft key on a screen of 176x220 has 80");
}

TEST_F(CheckRoom, MenuItemsAreNarrowerThanTheScreen) {
    ExpectLimit("Account", 14, ", a menu on a screen of 176x220 has 144");
}

TEST_F(CheckRoom, AWordOfAMessageIsNotBroken) {
    ExpectLimit("It failed.\\nTry again.", 16,
                " in a line, a message on a screen of 176x220 has 160 in a line");
}

TEST_F(CheckRoom, AMessageHasTwelveLines) {
    std::string words;
    for (int count = 0; count < 12; ++count)
        words += " " + Wide(16);
    Replace("It failed.\\nTry again.", "It failed.\\nTry again.\t" + words.substr(1));
    EXPECT_THAT(Check(), IsEmpty());
    const size_t line = Replace("It failed.\\nTry again.", "It failed.\\nTry again.\tI\\n" + words.substr(1));
    const std::string shown = "I\\n" + words.substr(1, 58);
    EXPECT_THAT(Check(), ElementsAre(Error(line, "'" + shown +
                                                     "...' needs 13 lines, a message on a screen of 176x220 "
                                                     "has 12 of 160 pixels")));
}

TEST_F(CheckRoom, AHighLabelHasMoreLines) {
    const std::string text = "If you have an account\t";
    Replace("If you have an account", text + Wide(13) + " " + Wide(13));
    EXPECT_THAT(Check(), IsEmpty());
    const size_t line = Replace("If you have an account", text + Wide(7) + " " + Wide(7) + " " + Wide(7));
    EXPECT_THAT(Check(), ElementsAre(Error(line,
                                           "'WWWWWWW WWWWWWW WWWWWWW' needs 3 lines, its label on the screen "
                                           "'Sign in' has 2 of 135 pixels")));
}

TEST_F(CheckRoom, AccessKeysTakeNoRoom) {
    Replace("&Open...", "&Open...\t&" + Wide(14));
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckRoom, OneLineHasNoLineBreak) {
    const size_t line = Replace("User ID:", "User ID:\tA\\nB");
    EXPECT_THAT(Check(), ElementsAre(Error(line,
                                           "the translation has a line break, and its label on the screen "
                                           "'Sign in' has one line")));
}

TEST_F(CheckRoom, EachPlaceIsTold) {
    const size_t line = Replace("%d maps", "%d maps\t" + Wide(17));
    const std::string needed = "'" + Wide(17) + "' needs 170 pixels";
    EXPECT_THAT(
        Check(),
        ElementsAre(Error(line, needed + " in a line, a message on a screen of 176x220 has 160 in a line"),
                    Error(line, needed + ", a soft key on a screen of 176x220 has 80")));
}
