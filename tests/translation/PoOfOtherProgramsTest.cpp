/* What editors and services make of .po files. */
#include "PoFixture.h"
#include "files/TableFile.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace {

using PoOfOtherPrograms = PoFileTest;

}  // namespace

TEST_F(PoOfOtherPrograms, WhatOtherProgramsTellStays) {
    const std::string whole =
        "# By hand.\n#. extracted from x\n#: y.cpp:3\n#, fuzzy, no-wrap\n" + plainHead +
        "\n#. Main: label\n#: \xE2\x81\xA8"
        "a b.cpp\xE2\x81\xA9:1 c.cpp\n"
        "#, c-format, no-wrap, max-length:20, range: 1..5, python-format\n"
        "#| msgctxt \"Former\"\n#| msgid \"Old %d\"\nmsgctxt \"Main\"\nmsgid \"New %d\"\nmsgstr \"\"\n"
        "\n#, no-c-format\n#~| msgctxt \"F\"\n#~| msgid \"f\"\n#~ msgid \"g\"\n#~ msgstr \"h\"\n";
    EXPECT_EQ(Rewritten(whole), whole);
}

TEST_F(PoOfOtherPrograms, MessagesOfOneLineHaveWhatTheyHave) {
    const Catalogue catalogue = Read(
        "#, a-flag\nmsgctxt \"msgid \\\" msgid\" msgid \"a\" msgstr \"\" # msgid\n"
        "#, b-flag\n  msgid\"b\" msgstr\"\" msgid \"c\" msgstr \"\"\n#: d.cpp:1\n#~  msgid \"d\"\n#~  msgstr "
        "\"e\"\n");
    EXPECT_THAT(Sentences(complaints), IsEmpty());
    ASSERT_THAT(catalogue.entries, SizeIs(4));
    EXPECT_THAT(catalogue.entries[0].flags, ElementsAre(u"a-flag"));
    EXPECT_THAT(catalogue.entries[1].flags, ElementsAre(u"b-flag"));
    EXPECT_THAT(catalogue.entries[2].flags, IsEmpty());
    EXPECT_EQ(catalogue.entries[2].line, 4U);
    EXPECT_THAT(catalogue.entries[3].references, ElementsAre(u"d.cpp:1"));
}

TEST_F(PoOfOtherPrograms, FlagsMayBeDividedByBlanks) {
    EXPECT_EQ(Rewritten("#, fuzzy c-format,no-wrap\nmsgid \"a\"\nmsgstr \"\"\n"),
              plainHead + "\n#, fuzzy, c-format, no-wrap\nmsgid \"a\"\nmsgstr \"\"\n");
}

TEST_F(PoOfOtherPrograms, LinesOfTheHeadWithoutAColonAreKept) {
    const std::string head = plainHead + "\"X-A: b\\n\"\n\"told by nobody\\n\"\n\": x\\n\"\n";
    EXPECT_EQ(Rewritten(head), head);
    const Catalogue catalogue = Read(head);
    EXPECT_THAT(WriteTable(catalogue, complaints), StartsWith("#+ X-A: b\n#+ told by nobody\n#+ : x\n"));
}

TEST_F(PoOfOtherPrograms, CommentsOfObsoleteTextsMayHaveTheirMark) {
    EXPECT_EQ(Rewritten("#~ # n\n#~ #: a.cpp:1\n#~ #, no-wrap\n#~msgid \"a\"\n#~msgstr \"b\"\n"),
              plainHead + "\n# n\n#: a.cpp:1\n#, no-wrap\n#~ msgid \"a\"\n#~ msgstr \"b\"\n");
}

TEST_F(PoOfOtherPrograms, NotesBehindTheLastTextAreOfTheWholeFile) {
    EXPECT_EQ(Rewritten("# a\nmsgid \"a\"\nmsgstr \"b\"\n# end\n#\n"),
              "# end\n#\n" + plainHead + "\n# a\nmsgid \"a\"\nmsgstr \"b\"\n");
}

TEST_F(PoOfOtherPrograms, WhatIsLostIsTold) {
    const auto lossesOf = [this](const std::string& bytes) { return Sentences(Read(bytes).losses); };
    EXPECT_THAT(lossesOf("msgctxt \"a\\r\\nb\"\nmsgid \"c\"\nmsgstr \"\"\n"),
                ElementsAre("2: a carriage return beside the text and its translation is left out"));
    EXPECT_THAT(
        lossesOf("#, fuzzy\n#| msgid \"a\"\n#| msgid_plural \"as\"\nmsgid \"b\"\nmsgstr \"\"\n"),
        ElementsAre("4: the former text's plural form, which the library does not have, is left out"));
    EXPECT_THAT(
        lossesOf("msgctxt \"A\"\nmsgid \"a\"\nmsgstr \"b\"\n\nmsgid \"a\"\nmsgstr \"b\"\n"),
        ElementsAre("5: the text stands in line 2, too: both become one message, as the library knows it"));
    EXPECT_THAT(lossesOf("msgid \"a\"\nmsgstr \"b\"\n\n#~ msgctxt \"B\"\n#~ msgid \"a\"\n#~ msgstr \"c\"\n"),
                ElementsAre("5: the obsolete translation 'c' is left out: its text is in use in line 1"));
}

TEST_F(PoOfOtherPrograms, MarkAndCrLfAreUnderstood) {
    EXPECT_EQ(Rewritten("\xEF\xBB\xBF# n\r\nmsgid \"a\"\r\nmsgstr \"b\"\r\n"),
              plainHead + "\n# n\nmsgid \"a\"\nmsgstr \"b\"\n");
}

TEST_F(PoOfOtherPrograms, BrokenLinesAreJoined) {
    EXPECT_EQ(Rewritten("msgid \"\"\n\"a \"\n\"b\"\nmsgstr \"c\"\n\" d\"\n"),
              plainHead + "\nmsgid \"a b\"\nmsgstr \"c d\"\n");
}

TEST_F(PoOfOtherPrograms, ScreenMayHaveLines) {
    EXPECT_EQ(Rewritten("msgctxt \"a\\nb\"\nmsgid \"c\"\nmsgstr \"\"\n"),
              plainHead + "\nmsgctxt \"\"\n\"a\\n\"\n\"b\"\nmsgid \"c\"\nmsgstr \"\"\n");
}
