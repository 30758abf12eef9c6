#include <gmock/gmock.h>
#include <stdio.h>

#include "Samples.h"
#include "Utf16.h"
#include "files/OpenedFile.h"
#include "files/TableFile.h"
#include "ui/TranslationFile.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Catalogue Read(std::string_view utf8) {
    Complaints complaints;
    const Catalogue catalogue = ReadTable(DecodeTable(utf8), complaints);
    EXPECT_THAT(Sentences(complaints), IsEmpty());
    return catalogue;
}

std::vector<std::string> ComplaintsOf(std::string_view bytes) {
    Complaints complaints;
    ReadTable(DecodeTable(bytes), complaints);
    return Sentences(complaints);
}

/* What the library writes when it is unloaded. */
std::string Harvest(const std::set<WideString>& texts) {
    char* bytes = nullptr;
    size_t size = 0;
    {
        const OpenedFile file(open_memstream(&bytes, &size));
        WriteUntranslatedTexts(file.get(), texts);
    }
    std::string harvest(bytes, size);
    free(bytes);
    return harvest;
}

}  // namespace

TEST(TableReader, RecordsComeInTheirOrder) {
    const Catalogue catalogue = Read("Open\tOuvrir\nClose\tXXXX\n\n\tQuit\tQuitter\n");
    ASSERT_EQ(catalogue.entries.size(), 3U);
    EXPECT_EQ(catalogue.entries[0].text, u"Open");
    EXPECT_EQ(catalogue.entries[0].translation, u"Ouvrir");
    EXPECT_EQ(catalogue.entries[0].line, 1U);
    EXPECT_EQ(catalogue.entries[1].translation, u"");
    EXPECT_EQ(catalogue.entries[2].text, u"Quit");
    EXPECT_EQ(catalogue.entries[2].line, 4U);
}

TEST(TableReader, CommentsTellAllThatAPoFileTells) {
    const Catalogue catalogue = Read(
        "# French\n#+ Last-Translator: A: B\n#, fuzzy\n\n"
        "# Note\n#\n#. Sign in: label\n#. Else\n#: a.cpp:1 b.cpp:2\n#: c.cpp:3\n#, c-format, fuzzy\n#| "
        "Before\n"
        "Open\tOuvrir\n#~ Log \"\"in\"\"\n#~ Connexion\n");
    EXPECT_THAT(catalogue.notes, ElementsAre(u"French"));
    ASSERT_EQ(catalogue.fields.size(), 1U);
    EXPECT_EQ(catalogue.fields[0].name, u"Last-Translator");
    EXPECT_EQ(catalogue.fields[0].value, u"A: B");
    EXPECT_TRUE(catalogue.isHeadFuzzy);
    ASSERT_EQ(catalogue.entries.size(), 2U);
    const CatalogueEntry& open = catalogue.entries[0];
    EXPECT_EQ(open.screen, u"Sign in");
    EXPECT_THAT(open.notes, ElementsAre(u"Note", u""));
    EXPECT_THAT(open.places, ElementsAre(u"Sign in: label", u"Else"));
    EXPECT_THAT(open.references, ElementsAre(u"a.cpp:1", u"b.cpp:2", u"c.cpp:3"));
    EXPECT_TRUE(open.isFormat);
    EXPECT_TRUE(open.isFuzzy);
    EXPECT_EQ(open.guessedFrom, u"Before");
    EXPECT_FALSE(open.isObsolete);
    EXPECT_TRUE(catalogue.entries[1].isObsolete);
    EXPECT_EQ(catalogue.entries[1].text, u"Log \"in\"");
    EXPECT_EQ(catalogue.entries[1].translation, u"Connexion");
}

TEST(TableReader, FlagsDirectlyAboveTheFirstRecordAreItsOwn) {
    const Catalogue catalogue = Read("#, fuzzy\nOpen\tOuvrir\n# Note\nClose\tFermer\n");
    EXPECT_FALSE(catalogue.isHeadFuzzy);
    EXPECT_TRUE(catalogue.entries.at(0).isFuzzy);
    EXPECT_THAT(catalogue.entries.at(1).notes, ElementsAre(u"Note"));
}

TEST(TableReader, WhatASpreadsheetHasDoneIsUnderstood) {
    const Catalogue catalogue = Read(
        "\"# Say \"\"hi\"\"\"\t\r\n\t\r\n\"# It's \\t\"\t\r\n\"Open\"\t\"Ouvrir \"\"a\"\"\"\r\nClose\t\r\n");
    EXPECT_THAT(catalogue.notes, ElementsAre(u"Say \"hi\""));
    ASSERT_EQ(catalogue.entries.size(), 2U);
    EXPECT_THAT(catalogue.entries[0].notes, ElementsAre(u"It's \t"));
    EXPECT_EQ(catalogue.entries[0].text, u"Open");
    EXPECT_EQ(catalogue.entries[0].translation, u"Ouvrir \"a\"");
    EXPECT_EQ(catalogue.entries[1].text, u"Close");
    EXPECT_EQ(catalogue.entries[1].translation, u"");
}

TEST(TableReader, CommentsHaveNoCarriageReturns) {
    EXPECT_THAT(Read("\n# a\rb\r\r\nOpen\tOuvrir\n").entries.at(0).notes, ElementsAre(u"ab"));
}

TEST(TableReader, EmptyCellIsNoTranslationYet) {
    const Catalogue catalogue = Read("Open\t\nClose\t\r\n");
    ASSERT_EQ(catalogue.entries.size(), 2U);
    EXPECT_EQ(catalogue.entries[0].text, u"Open");
    EXPECT_EQ(catalogue.entries[0].translation, u"");
    EXPECT_EQ(catalogue.entries[1].translation, u"");
}

TEST(TableReader, LastTranslationOfATextCounts) {
    const Catalogue catalogue = Read("# a\n\n# b\nOpen\tOuvre\n# b\n# c\nOpen\tOuvrir\nOpen\tXXXX\n");
    ASSERT_EQ(catalogue.entries.size(), 1U);
    EXPECT_EQ(catalogue.entries[0].translation, u"Ouvrir");
    EXPECT_EQ(catalogue.entries[0].line, 7U);
    EXPECT_THAT(catalogue.entries[0].notes, ElementsAre(u"b", u"c"));
}

TEST(TableReader, ObsoleteTextIsKeptOnceAndOnlyWhileItIsNotInUse) {
    const Catalogue catalogue = Read("\n#~ A\n#~ a\n#~ A\n#~ aa\n#~ B\n#~ b\n#~ C\n#~ c\nB\tXXXX\nC\tcc\n");
    ASSERT_EQ(catalogue.entries.size(), 3U);
    EXPECT_EQ(catalogue.entries[0].translation, u"aa");
    EXPECT_TRUE(catalogue.entries[0].isObsolete);
    EXPECT_EQ(catalogue.entries[1].translation, u"b");
    EXPECT_EQ(catalogue.entries[2].translation, u"cc");
}

TEST(TableReader, HarvestIsTakenAsItWasWritten) {
    const std::set<WideString> texts = {u"C:\\new \"x\"", u"a\tb\nc", u"\"\"", u"Path \\\\server"};
    Complaints complaints;
    const Catalogue catalogue = ReadTable(DecodeTable(Harvest(texts)), complaints);
    EXPECT_THAT(Sentences(complaints), IsEmpty());
    std::set<WideString> read;
    for (const CatalogueEntry& entry : catalogue.entries) {
        read.insert(entry.text);
        EXPECT_EQ(entry.translation, u"");
    }
    // The text with a real backslash before an n cannot be told from one with a line feed.
    EXPECT_EQ(read, (std::set<WideString>{u"C:\new \"x\"", u"a\tb\nc", u"\"\"", u"Path \\\\server"}));
}

TEST(TableReader, HarvestThatIsPartlyTranslatedKeepsItsQuotes) {
    const std::string shown =
        "The Password is not correct. If you have lost your password, click the \"I Forgot\" button.";
    const Catalogue catalogue = Read("Sign \"in\"\tXXXX\n" + shown + "\tAppuyez sur \"Oubli\".\n");
    ASSERT_EQ(catalogue.entries.size(), 2U);
    EXPECT_EQ(catalogue.entries[0].text, u"Sign \"in\"");
    EXPECT_EQ(catalogue.entries[1].text, Utf16Of(shown));
    EXPECT_EQ(catalogue.entries[1].translation, u"Appuyez sur \"Oubli\".");
}

TEST(TableReader, FileWithACommentOrInAnotherOrderIsNoHarvest) {
    EXPECT_EQ(Read("A \"b\\\\\"\tXXXX\nB\tXXXX\n").entries.at(0).text, u"A \"b\\\\\"");
    EXPECT_EQ(Read("# a\nA \"b\\\\\"\tXXXX\n").entries.at(0).text, u"A \"b\\\"");
    EXPECT_EQ(Read("B\tXXXX\nA \"b\\\\\"\tXXXX\n").entries.at(1).text, u"A \"b\\\"");
}

TEST(TableReader, HarvestInWhichTranslationsWereWrittenIsOneStill) {
    const Catalogue catalogue = Read("\"Go\"\tAller\r\n\\\\server \"x\" \"\"\tXXXX\r\n\r\n");
    ASSERT_EQ(catalogue.entries.size(), 2U);
    EXPECT_EQ(catalogue.entries[0].text, u"\"Go\"");
    EXPECT_EQ(catalogue.entries[0].translation, u"Aller");
    EXPECT_EQ(catalogue.entries[1].text, u"\\\\server \"x\" \"\"");
    EXPECT_EQ(Read("\"Go\"\tAller\nStop\tXXXX\n").entries.at(0).text, u"Go");
}

TEST(TableReader, FieldWithDoubledQuotesIsOfNoHarvest) {
    EXPECT_EQ(Read("\"Say \"\"hi\"\"\"\tXXXX\n").entries.at(0).text, u"Say \"hi\"");
    EXPECT_EQ(Read("\"Go\"\tXXXX\n").entries.at(0).text, u"\"Go\"");
    EXPECT_EQ(Read(Harvest({u"\"Say \"\"hi\"\"\""})).entries.at(0).text, u"\"Say \"\"hi\"\"\"");
}

TEST(TableReader, OrderOfAHarvestTellsWhatABackslashIs) {
    const std::set<WideString> texts = {u"C:\\data \"a\"", u"C:\\new \"b\"", u"C:\\to \"c\""};
    const Catalogue catalogue = Read(Harvest(texts));
    std::set<WideString> read;
    for (const CatalogueEntry& entry : catalogue.entries)
        read.insert(entry.text);
    EXPECT_EQ(read, texts);
}

TEST(TableReader, HarvestedTextWithACarriageReturnIsLeftOut) {
    const Catalogue catalogue = Read(Harvest({u"a\r\nb \"c\"", u"d \"e\"", u"f\r"}));
    ASSERT_EQ(catalogue.entries.size(), 1U);
    EXPECT_EQ(catalogue.entries[0].text, u"d \"e\"");
    const std::string sentence = " is left out: no language file can have a text with a carriage return";
    EXPECT_THAT(Sentences(catalogue.losses),
                ElementsAre("1: 'a\xE2\x96\xA1\\nb \"c\"'" + sentence, "3: 'f\xE2\x96\xA1'" + sentence));
}

TEST(TableReader, MistakesAreToldWithTheirLines) {
    EXPECT_THAT(ComplaintsOf("Open\n"),
                ElementsAre("1: the line has no TAB between a text and its translation"));
    EXPECT_THAT(ComplaintsOf("\tOpen\n"),
                ElementsAre("1: the line has no TAB between a text and its translation"));
    EXPECT_THAT(ComplaintsOf("\"\tOuvrir\n"), ElementsAre("1: the text before the TAB is empty"));
    EXPECT_THAT(ComplaintsOf("a\tb\nOp\ren\tOuvrir\r\n"),
                ElementsAre("2: a carriage return within the line, which the library drops"));
    EXPECT_THAT(ComplaintsOf(std::string_view("Open\tOuv\0rir\n", 13)),
                ElementsAre("1: a character with the number 0, which ends a text"));
    EXPECT_THAT(ComplaintsOf("#~\n"), ElementsAre("1: an obsolete text is empty"));
}

TEST(TableReader, ObsoleteTextNeedsItsTranslation) {
    const std::string sentence = "2: an obsolete text stands without its translation below it";
    EXPECT_THAT(ComplaintsOf("\n#~ a\n"), ElementsAre(sentence));
    EXPECT_THAT(ComplaintsOf("\n#~ a\nOpen\tOuvrir\n"), ElementsAre(sentence));
    EXPECT_THAT(ComplaintsOf("\n#~ a\n# b\n#~ c\n#~ d\n"), ElementsAre(sentence));
}

TEST(TableReader, StrangeEncodingsAreToldWithTheirLines) {
    EXPECT_THAT(ComplaintsOf("Open\tOuvrir\nSay\t\x93"
                             "a\x94\n"),
                ElementsAre("2: the file is neither UTF-16 nor UTF-8 nor Latin-1: save it as UTF-8"));
    EXPECT_THAT(ComplaintsOf(Utf16Bytes(u"\xFEFFOpen\tOuvrir") + "a"),
                ElementsAre("1: the file ends with half a character (an odd number of bytes)"));
}
