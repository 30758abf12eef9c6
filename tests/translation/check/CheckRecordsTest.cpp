/* What `check` says of the lines of files, whatever their texts are. */
#include "CheckFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

using CheckRecords = CheckFixture;

TEST_F(CheckRecords, ACompleteTranslationIsPraised) {
    EXPECT_THAT(Check(), IsEmpty());
    EXPECT_EQ("FILE: 14 texts, complete\n", said);
}

TEST_F(CheckRecords, BareQuotesOfATextAreDropped) {
    const size_t line = Replace("\"Press \"\"I Forgot\"\".\"", "Press \"I Forgot\".\tForgot");
    EXPECT_THAT(Check(),
                ElementsAre(Error(line,
                                  "the library drops a double quote and does not find the text; write it as "
                                  "\"Press \"\"I Forgot\"\".\"")));
}

TEST_F(CheckRecords, BareQuotesOfAnEnclosedTextAreDropped) {
    const size_t line = Replace("\"Press \"\"I Forgot\"\".\"", "\"Press \"I Forgot\".\"\tForgot");
    EXPECT_THAT(Check(),
                ElementsAre(Error(line,
                                  "the library drops a double quote and does not find the text; write it as "
                                  "\"Press \"\"I Forgot\"\".\"")));
}

TEST_F(CheckRecords, BareQuotesOfATranslationAreDropped) {
    const size_t line = Replace("Welcome", "Welcome\tMy \"site\"");
    EXPECT_THAT(Check(), ElementsAre(Error(line,
                                           "the library drops a double quote of the translation; write it as "
                                           "\"My \"\"site\"\"\"")));
}

TEST_F(CheckRecords, WhatControlsATerminalIsNotPrinted) {
    const size_t line = Replace("Welcome", "Welcome\t\x1B[2J\"\xC2\x9B");
    EXPECT_THAT(Check(),
                ElementsAre(Error(line,
                                  "the library drops a double quote of the translation; write it as "
                                  "\"□[2J\"\"□\""),
                            Error(line,
                                  "the character U+001B in '□[2J\"□' is none to be read; delete it, or write "
                                  "what is meant")));
}

TEST_F(CheckRecords, AFieldThatIsTooLongForASentenceIsDescribed) {
    const size_t line = Replace("Welcome", "Welcome\t\"" + std::string(400, 'i') + "\" i");
    EXPECT_THAT(Check()[0], Error(line,
                                  "the library drops a double quote of the translation; write it as \"...\", "
                                  "with \"\" for each quote in it"));
}

TEST_F(CheckRecords, ATranslationOfSeveralLinesIsNotClosed) {
    const size_t line = Replace("Welcome", "Welcome\t\"My\nsite\"");
    EXPECT_THAT(Check(),
                ElementsAre(Error(line,
                                  "no double quote closes the one before the translation; write it "
                                  "in one line, with \\n for each line break"),
                            Error(line + 1, "the line has no TAB between a text and its translation")));
}

TEST_F(CheckRecords, QuotesThatAreEscapedOrEncloseAreRead) {
    Replace("Welcome", "\"Welcome\"\t\"My \"\"site\"\"\"");
    Replace("Save it", "Save it\t\\\"It\\\"");
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckRecords, OfTwoTranslationsTheLastCounts) {
    lines.emplace_back("Welcome\tHello");
    EXPECT_THAT(Check(), ElementsAre(Error(15,
                                           "'Welcome' is translated as 'Welcome' in line 2, which this line "
                                           "replaces; remove one of them")));
}

TEST_F(CheckRecords, TheSameRecordTwiceIsNoMistake) {
    lines.emplace_back("Welcome\t\"Welcome\"");
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckRecords, AnEmptyTranslationShowsNothing) {
    const size_t line = Replace("Welcome", "Welcome\t");
    const std::string error =
        Error(line, "the translation of 'Welcome' is empty; write one, or XXXX for none yet");
    EXPECT_THAT(Check(), ElementsAre(error));
    EXPECT_THAT(Check(Joined("\n")), ElementsAre(error));
}

TEST_F(CheckRecords, AnEmptyTranslationIsNoneOfTwo) {
    lines.emplace_back("Welcome\t");
    const std::string error =
        Error(15, "the translation of 'Welcome' is empty; write one, or XXXX for none yet");
    EXPECT_THAT(Check(), ElementsAre(error));
    EXPECT_THAT(Check(Joined("\n")), ElementsAre(error));
}

TEST_F(CheckRecords, ALineNeedsATab) {
    const size_t line = Replace("Welcome", "Welcome Hello");
    EXPECT_THAT(Check(), ElementsAre(Error(line, "the line has no TAB between a text and its translation"),
                                     Error(14, "the text 'Welcome' is missing (Sign in: caption)")));
}

TEST_F(CheckRecords, CommentsAreNoRecords) {
    lines.insert(lines.begin(), {"# French, \"unfinished\"", "#. Sign in: label"});
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckRecords, AHarvestGetsOneHint) {
    EXPECT_THAT(Check(Utf16Bytes(u"\xFEFFOpen\tXXXX\r\nPress \"I Forgot\".\tXXXX\r\n"), "OrvandeOnline.txt"),
                ElementsAre(Error(1,
                                  "this is a harvest as the library writes it; begin a translation with: "
                                  "tools/translation convert FILE NEW.txt")));
}

TEST_F(CheckRecords, SeveralFilesAreJudgedEach) {
    EXPECT_THAT(Check("Opne\tOuvrir\n").size(), 14);
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckRecords, WithoutAFileNothingIsChecked) {
    EXPECT_THROW(RunCheck({}), UsageError);
}

TEST_F(CheckRecords, AFileThatCannotBeReadKeepsNobodyFromTheOthers) {
    EXPECT_THAT(Check(), IsEmpty());
    const std::string good = Path();
    const std::string all[] = {"/nowhere/French.txt", good, "/nowhere/German.txt"};
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    EXPECT_EQ(2, RunCheck(all));
    EXPECT_EQ(good + ": 14 texts, complete\n", testing::internal::GetCapturedStdout());
    EXPECT_EQ(
        "orvande-translation: '/nowhere/French.txt' cannot be read: No such file or directory\n"
        "orvande-translation: '/nowhere/German.txt' cannot be read: No such file or directory\n",
        testing::internal::GetCapturedStderr());
}

TEST_F(CheckRecords, OfAnEmptyFileAllTextsAreMissingInItsFirstLine) {
    for (const std::string bytes : {"", "\xFF\xFE"}) {
        EXPECT_THAT(Check(bytes), testing::SizeIs(13));
        EXPECT_EQ(Check(bytes)[0], Error(1, "the text 'Welcome' is missing (Sign in: caption)"));
    }
    EXPECT_EQ(Check("", "fr.po")[0], Error(1, "the text 'Welcome' is missing (Sign in: caption)"));
}

TEST_F(CheckRecords, APoFileUnderAnotherNameIsToldOnce) {
    const std::string po = "# Français\nmsgid \"Welcome\"\nmsgstr \"Reçu\"\n";
    for (const std::string name : {"French.txt", "French.tsv"})
        EXPECT_THAT(Check(po, name),
                    ElementsAre(Error(2, "the file is a .po file: give it a name that ends in .po")));
}

TEST_F(CheckRecords, ASecondTabIsShown) {
    const std::string sentence =
        "a second TAB, which the user would see with all behind it; delete both, or write \\t";
    const size_t line = Replace("Welcome", "Welcome\tHello\t");
    EXPECT_THAT(Check(), ElementsAre(Error(line, sentence)));
    Replace("Welcome", "Welcome\tHello\\tyou");
    EXPECT_THAT(Check(), IsEmpty());
}

TEST_F(CheckRecords, OfAnEmptyThirdColumnNothingElseIsTold) {
    for (std::string& line : lines)
        line += '\t';
    const std::vector<std::string> told = Check(Joined("\n"), "French.tsv");
    EXPECT_EQ(lines.size(), told.size());
    EXPECT_THAT(told, testing::Each(testing::HasSubstr("a second TAB")));
}

TEST_F(CheckRecords, OfLinesThatEndWithCrAloneThereIsOne) {
    EXPECT_THAT(
        Check(Joined("\r"), "French.tsv"),
        ElementsAre(Error(1, "the lines end with a carriage return alone: save the file with line feeds")));
}
