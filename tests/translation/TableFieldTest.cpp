#include <gtest/gtest.h>

#include <random>

#include "files/TableFile.h"
#include "ui/TranslationFile.h"

TEST(TableField, EscapedTextsAreReadBackByTheLibrary) {
    std::mt19937 random(1);
    constexpr WideStringView units = u"\"\"\\tn\t\n ab\xE9\xD83D";
    for (int round = 0; round < 100000; ++round) {
        WideString text;
        for (size_t count = random() % 9; count > 0; --count)
            text += units[random() % units.size()];
        const WideString field = EscapedText(text);
        ASSERT_EQ(UnescapeTranslationText(field), text);
        ASSERT_EQ(MeantText(field), text);
        ASSERT_TRUE(AreQuotesKept(field));
        ASSERT_EQ(field.find_first_of(u"\t\n"), WideString::npos);
    }
}

TEST(TableField, EscapedTextsAreOneFieldForSpreadsheets) {
    EXPECT_EQ(EscapedText(u"Open"), u"Open");
    EXPECT_EQ(EscapedText(u"Say \"hi\""), u"\"Say \"\"hi\"\"\"");
    EXPECT_EQ(EscapedText(u"a\tb\nc\\"), u"a\\tb\\nc\\\\");
}

TEST(TableField, TextsOfNothingButQuotesAreNotEnclosed) {
    EXPECT_EQ(EscapedText(u"\"\""), u"\\\"\\\"");
}

TEST(TableField, RecordIsWhatTheLibraryReads) {
    const auto record = ReadTableRecord(u"\t\t\"Say \"\"hi\"\"\"\tDites\\n\tok\r");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->rawText, u"\"Say \"\"hi\"\"\"");
    EXPECT_EQ(record->text, u"Say \"hi\"");
    EXPECT_EQ(record->rawTranslation, u"Dites\\n\tok");
    EXPECT_EQ(record->translation, u"Dites\n\tok");
}

TEST(TableField, ValueOfOnlyACrIsARecordWithAnEmptyTranslation) {
    const auto record = ReadTableRecord(u"Open\t\r");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->text, u"Open");
    EXPECT_EQ(record->rawTranslation, u"");
    EXPECT_EQ(record->translation, u"");
}

TEST(TableField, LinesWithoutTextTabAndTranslationAreNoRecords) {
    for (const WideStringView line : {u"", u"Open", u"Open\t", u"\tOpen", u"\t\t", u"\r"})
        EXPECT_FALSE(ReadTableRecord(line));
}

TEST(TableField, CommentsMayBeQuotedAndFilledUp) {
    for (const WideStringView line :
         {u"#", u"# a", u"# a\r", u"# a\t\t\r", u"\"# say \"\"a\"\"\"\t", u"#~ a"})
        EXPECT_TRUE(IsTableComment(line));
    for (const WideStringView line : {u"# a\tb", u"\"#1\"\tb", u"a # b", u"", u"\t#"})
        EXPECT_FALSE(IsTableComment(line));
}

TEST(TableField, QuotesAreKeptWhenDoubledEscapedOrAroundTheWhole) {
    for (const WideStringView raw :
         {u"", u"a", u"a \"\"b\"\"", u"a \\\"b\\\"", u"\"a\"", u"\"a \"\"b\"\"\"", u"\"a\\\\\""})
        EXPECT_TRUE(AreQuotesKept(raw));
    for (const WideStringView raw :
         {u"\"", u"a \"b\" c", u"\"a\" b", u"\"a\" and \"b\"", u"a\"", u"\"a\\\"", u"\"a \"b\"\""})
        EXPECT_FALSE(AreQuotesKept(raw));
}

TEST(TableField, BareQuotesAreMeant) {
    EXPECT_EQ(MeantText(u"Press \"OK\"\\nnow"), u"Press \"OK\"\nnow");
    EXPECT_EQ(MeantText(u"\"A\" and \"B\""), u"\"A\" and \"B\"");
    EXPECT_EQ(MeantText(u"\"Press \"OK\" now\""), u"Press \"OK\" now");
    EXPECT_EQ(MeantText(u"\"\"OK\" is pressed\""), u"\"OK\" is pressed");
    EXPECT_EQ(MeantText(u"5\" or \\\\ \"\"6\"\""), u"5\" or \\ \"6\"");
    EXPECT_EQ(MeantText(u"\"Press \"\"OK\"\"\""), u"Press \"OK\"");
}

TEST(TableField, HarvestEscapesOnlyTabAndLf) {
    EXPECT_EQ(HarvestedText(u"a\\tb\\nc \"d\" \\\\ \\\" e\\"), u"a\tb\nc \"d\" \\\\ \\\" e\\");
}
