/* What `check` says of texts and their translations. */
#include "CheckFixture.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

using CheckTexts = CheckFixture;

TEST_F(CheckTexts, AnUnknownTextMayBeMeantForAnother) {
    const size_t line = Replace("Welcome", "Wellcome\tHello");
    EXPECT_THAT(Check(), ElementsAre(Error(line,
                                           "'Wellcome' is no text of Orvande Online 1.0.0; did you mean "
                                           "'Welcome'?"),
                                     Error(14, "the text 'Welcome' is missing (Sign in: caption)")));
}

TEST_F(CheckTexts, AnUnknownTextThatIsLikeNoneIsToBeRemoved) {
    lines.emplace_back("Quit the program\tBye");
    EXPECT_THAT(Check(),
                ElementsAre(Error(15, "'Quit the program' is no text of Orvande Online 1.0.0; remove it")));
}

TEST_F(CheckTexts, ObsoleteTextsAreNoMistakes) {
    lines.insert(lines.end(), {"#~ Quit", "#~ Bye"});
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckTexts, ATextWithoutOrnamentsServesThoseWithThem) {
    Replace("&Open...", "Open\tOuvrir");
    Replace("User ID:", "User ID\tNom");
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckTexts, ATextWithoutOrnamentsIsNotUsedWhereThatWithThemIsTranslated) {
    lines.emplace_back("User ID\tName");
    EXPECT_THAT(Check(), ElementsAre(Error(15,
                                           "'User ID' is never looked up, because line 3 translates 'User "
                                           "ID:'; remove it")));
}

TEST_F(CheckTexts, MissingTextsAreToldEach) {
    lines.erase(lines.begin() + 4, lines.begin() + 6);
    EXPECT_THAT(
        Check(),
        ElementsAre(Error(12, "the text 'If you have an account' is missing (Sign in: label, 90 x 17)"),
                    Error(12, "the text 'Save it' is missing (Sign in: check box, 48 x 10)")));
}

TEST_F(CheckTexts, TheTitleMayBeMissingOrUntranslated) {
    Replace("Sample", "Sample\tXXXX");
    EXPECT_THAT(Check(), IsEmpty());
    lines.erase(lines.begin());
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckTexts, ATextIsNotTranslatedYet) {
    const size_t line = Replace("Welcome", "Welcome\tXXXX");
    EXPECT_THAT(Check(), ElementsAre(Error(line, "'Welcome' is not translated yet")));
}

TEST_F(CheckTexts, AGuessHasToBeConfirmed) {
    const size_t line = Replace("Welcome", "#, fuzzy\r\nWelcome\tHello") + 1;
    EXPECT_THAT(Check(), ElementsAre(Error(line,
                                           "the translation of 'Welcome' is a guess; confirm it by removing "
                                           "'fuzzy' from the line of its flags")));
}

TEST_F(CheckTexts, PlaceholdersHaveToReadTheSame) {
    const size_t line = Replace("%d maps", "%d maps\t%s %5.2f%%");
    EXPECT_THAT(Check(),
                ElementsAre(Error(line,
                                  "the placeholders of '%d maps' are '%d', those of the translation '%s', "
                                  "'%5.2f', '%%': it would not be shown")));
}

TEST_F(CheckTexts, OddPlaceholdersAreToldInOneLine) {
    const std::string begin = "the placeholders of '%d maps' are '%d', those of the translation ";
    const std::string end = ": it would not be shown";
    const std::string many = "'%d', '%d', '%d', '%d', '%d', '%d', '%d', '%d', '%d', '%d' and more";
    const std::pair<std::string, std::string> cases[] = {
        {"%d, 100 %", "'%d', '%'"},       {"%d, 100 % ", "'%d', '% '"}, {"%\\n%d", "'%\\n', '%d'"},
        {"%\x01", "'%\u25A1'"},           {"%1$s", "'%1$s'"},           {"%.100d", "'%.100d'"},
        {"%d%d%d%d%d%d%d%d%d%d%n", many},
    };
    for (const auto& [translation, list] : cases) {
        const size_t line = Replace("%d maps", "%d maps\t" + translation);
        EXPECT_THAT(Check(), Contains(Error(line, begin + list + end))) << translation;
    }
}

TEST_F(CheckTexts, PlaceholdersMayHaveAnotherFormOfTheSameType) {
    Replace("%d maps", "%d maps\t%5u %%");
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckTexts, APercentSignIsNoPlaceholderElsewhere) {
    Replace("Welcome", "Welcome\t100 %s");
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckTexts, AnAccessKeyIsLost) {
    const size_t line = Replace("&Open...", "&Open...\tOuvrir && lire");
    EXPECT_THAT(Check(), ElementsAre(Error(
                             line, "the access key is lost: write & before a letter, as in '&Open...'")));
}

TEST_F(CheckTexts, AnAccessKeyIsDoubled) {
    const size_t line = Replace("&Open...", "&Open...\t&Ouvrir&!");
    EXPECT_THAT(Check(), ElementsAre(Error(line, "more than one & underlines a letter; '&Open...' has one")));
}

TEST_F(CheckTexts, AnAccessKeyIsTooMuch) {
    const size_t line = Replace("Save it", "Save it\tA&B");
    EXPECT_THAT(Check(), ElementsAre(Error(line,
                                           "the & in 'A&B' is taken for the mark of an access key, and the "
                                           "text has none; write && for an & to be seen")));
    for (const std::string translation : {"A & B", "B &", "A &&&"}) {
        Replace("Save it", "Save it\t" + translation);
        EXPECT_THAT(Check(), ElementsAre(Error(line, "the & in '" + translation +
                                                         "' is taken for the mark of an access key, and the "
                                                         "text has none; write && for an & to be seen")));
    }
    Replace("Save it", "Save it\tA&&B");
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckTexts, AnAccessKeyIsTooMuchInARecordThatServesATextWithOrnaments) {
    const size_t line = Replace("User ID:", "User ID\tN&om");
    EXPECT_THAT(Check(), ElementsAre(Error(line,
                                           "the & in 'N&om' is taken for the mark of an access key, and the "
                                           "text has none; write && for an & to be seen")));
    Replace("User ID", "User ID\tNom");
    Replace("&Open...", "Open\t&Ouvrir");
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckTexts, AnAmpersandInCaptionsAndMessagesIsOne) {
    Replace("Welcome", "Welcome\tYou & me");
    Replace("It failed.\\nTry again.", "It failed.\\nTry again.\tYou & me");
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckTexts, TwoAmpersandsInCaptionsAndMessagesAreTwo) {
    const size_t caption = Replace("Welcome", "Welcome\tYou && me");
    const size_t message = Replace("It failed.\\nTry again.", "It failed.\\nTry again.\tYou && me");
    const std::string sentence = "the user would see both & of 'You && me'; ";
    EXPECT_THAT(
        Check(),
        ElementsAre(Error(caption,
                          sentence + "the caption on a screen of 176x220 has no access keys, so write one &"),
                    Error(message,
                          sentence + "a message on a screen of 176x220 has no access keys, so write one &")));
}

TEST_F(CheckTexts, NamesInQuotesAreThoseOfTheSoftKeys) {
    Replace("Forgot", "Forgot\tOublié");
    Replace("\"Press \"\"I Forgot\"\".\"", "\"Press \"\"I Forgot\"\".\"\tTapez « Oublié »");
    EXPECT_THAT(Check(), IsEmpty());
    const size_t line =
        Replace("\"Press \"\"I Forgot\"\".\"", "\"Press \"\"I Forgot\"\".\"\tTapez « Perdu »");
    EXPECT_THAT(Check(), ElementsAre(Error(line,
                                           "the text mentions 'Forgot', which is translated as 'Oublié': the "
                                           "translation has to use that name")));
}

TEST_F(CheckTexts, NamesInPathsAreThoseOfTheMenu) {
    Replace("New Account", "New Account\t&&Nouveau");
    const size_t line = Replace("Select Menu / New Account", "Select Menu / New Account\tMenu, Nouveau");
    EXPECT_THAT(Check(), ElementsAre(Error(line,
                                           "the text mentions 'New Account', which is translated as "
                                           "'&&Nouveau': the translation has to use that name")));
    Replace("Select Menu / New Account", "Select Menu / New Account\tMenu / &&Nouveau");
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckTexts, ANameThatIsNotTranslatedYetIsToldOnce) {
    for (const std::string mark : {"XXXX", "xxxx", "XXXX Forgot"}) {
        const size_t line = Replace("Forgot", "Forgot\t" + mark);
        EXPECT_THAT(Check(), ElementsAre(Error(line, "'Forgot' is not translated yet")));
    }
}

TEST_F(CheckTexts, ATextWithNothingToSeeIsEmpty) {
    for (const std::string blanks : {" ", "  \\t", "\u00A0", "\u200B", "\"\"", "\" \""}) {
        const size_t line = Replace("Welcome", "Welcome\t" + blanks);
        EXPECT_THAT(Check(), ElementsAre(Error(line,
                                               "the translation of 'Welcome' is empty; write one, or XXXX "
                                               "for none yet")));
    }
}

TEST_F(CheckTexts, TheMarkOfNoneIsKnownHoweverItIsTyped) {
    for (const std::string mark : {"XXXX ", "xxxx", "XXX"}) {
        const size_t line = Replace("Welcome", "Welcome\t" + mark);
        EXPECT_THAT(Check(), ElementsAre(Error(line, "'Welcome' is not translated yet")));
    }
    Replace("Welcome", "Welcome\tXX");
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckTexts, BlanksThatCannotBeSeenAreShownAsBoxes) {
    const size_t line = Replace("New Account", "New\u00A0Account\tNew Account");
    EXPECT_THAT(Check(), testing::Contains(Error(line,
                                                 "'New\u25A1Account' is no text of Orvande Online 1.0.0; did "
                                                 "you mean 'New Account'?")));
}
