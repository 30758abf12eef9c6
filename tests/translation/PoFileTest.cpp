#include "files/PoFile.h"

#include "HostileCatalogue.h"
#include "PoFixture.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace {

using PoFile = PoFileTest;

/* As a translator's editor leaves it. */
const std::string translated =
    "# French texts.\n"
    "#\n"
    "msgid \"\"\n"
    "msgstr \"\"\n"
    "\"Project-Id-Version: Orvande Online 1.0.0\\n\"\n"
    "\"PO-Revision-Date: 2026-11-22 09:00+0100\\n\"\n"
    "\"Last-Translator: A. Person <a@orvande.example>\\n\"\n"
    "\"Language: fr\\n\"\n"
    "\"MIME-Version: 1.0\\n\"\n"
    "\"Content-Type: text/plain; charset=UTF-8\\n\"\n"
    "\"Content-Transfer-Encoding: 8bit\\n\"\n"
    "\"Plural-Forms: nplurals=2; plural=(n > 1);\\n\"\n"
    "\"X-Generator: An editor 3.2\\n\"\n"
    "\n"
    "# Not in the plural.\n"
    "#. Sign in: label\n"
    "#. Everywhere: message\n"
    "#: src/account/SignIn.cpp:25 src/ui/Boxes.cpp:7\n"
    "#, fuzzy, c-format\n"
    "#| msgid \"User name\"\n"
    "msgctxt \"Sign in\"\n"
    "msgid \"User \\\"ID\\\"\\t%d\"\n"
    "msgstr \"\xC3\x89tat\\\\\"\n"
    "\n"
    "msgid \"\"\n"
    "\"First\\n\"\n"
    "\"Second\"\n"
    "msgstr \"\"\n"
    "\"Premi\xC3\xA8re ligne, qui est beaucoup trop longue pour une ligne de quatre-vingts "
    "caract\xC3\xA8res, mais "
    "reste enti\xC3\xA8re\\n\"\n"
    "\"Seconde\\n\"\n"
    "\n"
    "msgid \"Ends\\n\"\n"
    "msgstr \"\"\n"
    "\n"
    "# Gone.\n"
    "#~| msgid \"Sign on\"\n"
    "#~ msgctxt \"Sign in\"\n"
    "#~ msgid \"\"\n"
    "#~ \"Log\\n\"\n"
    "#~ \"in\"\n"
    "#~ msgstr \"Connexion\"\n";

}  // namespace

TEST_F(PoFile, AllThatItTellsIsRead) {
    const Catalogue catalogue = Read(translated);
    ASSERT_THAT(Sentences(complaints), IsEmpty());
    EXPECT_THAT(catalogue.notes, ElementsAre(u"French texts.", u""));
    ASSERT_THAT(catalogue.fields, SizeIs(6));
    EXPECT_EQ(catalogue.fields[2].name, u"Last-Translator");
    EXPECT_EQ(catalogue.fields[2].value, u"A. Person <a@orvande.example>");
    ASSERT_THAT(catalogue.entries, SizeIs(4));
    const CatalogueEntry& user = catalogue.entries[0];
    EXPECT_EQ(user.text, u"User \"ID\"\t%d");
    EXPECT_EQ(user.translation, u"\xC9tat\\");
    EXPECT_EQ(user.screen, u"Sign in");
    EXPECT_THAT(user.notes, ElementsAre(u"Not in the plural."));
    EXPECT_THAT(user.places, ElementsAre(u"Sign in: label", u"Everywhere: message"));
    EXPECT_THAT(user.references, ElementsAre(u"src/account/SignIn.cpp:25", u"src/ui/Boxes.cpp:7"));
    EXPECT_TRUE(user.isFormat);
    EXPECT_TRUE(user.isFuzzy);
    EXPECT_EQ(user.guessedFrom, u"User name");
    EXPECT_EQ(user.line, 22U);
    EXPECT_EQ(catalogue.entries[1].text, u"First\nSecond");
    EXPECT_EQ(catalogue.entries[1].line, 25U);
    EXPECT_EQ(catalogue.entries[2].translation, u"");
    EXPECT_TRUE(catalogue.entries[3].isObsolete);
    EXPECT_EQ(catalogue.entries[3].translation, u"Connexion");
}

TEST_F(PoFile, AllThatItTellsIsWrittenAgain) {
    EXPECT_THAT(Sentences(Read(translated).losses), IsEmpty());
    EXPECT_EQ(Rewritten(translated), translated);
}

TEST_F(PoFile, NothingIsLostWhateverItIs) {
    HostileCatalogues hostile(11);
    for (int round = 0; round < 500; ++round) {
        const Catalogue catalogue = hostile.Next();
        const std::string bytes = WritePo(catalogue, complaints);
        ASSERT_EQ(Described(Read(bytes)), Described(catalogue)) << bytes;
        ASSERT_THAT(Sentences(complaints), IsEmpty());
    }
}

TEST_F(PoFile, HeadIsMadeWhereThereIsNone) {
    EXPECT_EQ(Rewritten(""), plainHead);
    EXPECT_EQ(Rewritten("msgid \"a\"\nmsgstr \"b\"\n"), plainHead + "\nmsgid \"a\"\nmsgstr \"b\"\n");
}

TEST_F(PoFile, HeadThatNobodyHasFilledInStaysThat) {
    EXPECT_EQ(Rewritten("# Title\n#, fuzzy\n" + plainHead), "# Title\n#, fuzzy\n" + plainHead);
}

TEST_F(PoFile, CommentsDoNotEndWithABackslashWhichWouldTakeTheNextLineIn) {
    Catalogue catalogue;
    CatalogueEntry entry;
    entry.text = u"a";
    entry.notes = {u"C:\\", u"b"};
    entry.references = {u"D:\\"};
    catalogue.entries.push_back(entry);
    const Catalogue read = Read(WritePo(catalogue, complaints));
    EXPECT_THAT(read.entries.at(0).notes, ElementsAre(u"C:\\ ", u"b"));
    EXPECT_THAT(read.entries.at(0).references, ElementsAre(u"D:\\"));
    EXPECT_EQ(read.entries.at(0).text, u"a");
}

TEST_F(PoFile, ControlCharactersAreEscaped) {
    EXPECT_EQ(Rewritten("msgid \"\\a\\b\\f\\v\\r\\001x\"\nmsgstr \"\"\n"),
              plainHead + "\nmsgid \"\\a\\b\\f\\v\\r\\001x\"\nmsgstr \"\"\n");
}

TEST_F(PoFile, XxxxIsNoTranslation) {
    EXPECT_EQ(Read("msgid \"a\"\nmsgstr \"XXXX\"\n").entries.at(0).translation, u"");
}

TEST_F(PoFile, OneTextOnTwoScreensIsOneEntry) {
    const Catalogue catalogue = Read(
        "#: a.cpp:1\nmsgctxt \"One\"\nmsgid \"a\"\nmsgstr \"b\"\n\n"
        "#: c.cpp:2\nmsgctxt \"Two\"\nmsgid \"a\"\nmsgstr \"b\"\n\n"
        "msgctxt \"Three\"\nmsgid \"a\"\nmsgstr \"\"\n");
    EXPECT_THAT(Sentences(complaints), IsEmpty());
    ASSERT_THAT(catalogue.entries, SizeIs(1));
    EXPECT_EQ(catalogue.entries[0].screen, u"One");
    EXPECT_EQ(catalogue.entries[0].translation, u"b");
    EXPECT_THAT(catalogue.entries[0].places, ElementsAre(u"Two", u"Three"));
    EXPECT_THAT(catalogue.entries[0].references, ElementsAre(u"a.cpp:1", u"c.cpp:2"));
}

TEST_F(PoFile, OneTextWithTwoTranslationsIsAMistake) {
    EXPECT_THAT(ComplaintsOf("msgctxt \"One\"\nmsgid \"a\"\nmsgstr \"b\"\n\n"
                             "msgctxt \"Two\"\nmsgid \"a\"\nmsgstr \"c\"\n"),
                ElementsAre("6: the text has another translation in line 2, and the library knows only one"));
    EXPECT_THAT(ComplaintsOf("msgid \"a\"\nmsgstr \"b\"\n\nmsgid \"a\"\nmsgstr \"c\"\n"),
                ElementsAre("4: duplicate message definition"));
}

TEST_F(PoFile, PluralFormsAreAMistake) {
    EXPECT_THAT(ComplaintsOf("\nmsgid \"a\"\nmsgid_plural \"as\"\nmsgstr[0] \"b\"\nmsgstr[1] \"bs\"\n"),
                ElementsAre("2: plural forms, which the library does not have"));
}

TEST_F(PoFile, OtherCharsetsAreAMistake) {
    EXPECT_THAT(ComplaintsOf("msgid \"a\"\nmsgstr \"\xE9\"\n"),
                ElementsAre("2: the line is not UTF-8: save the file as that"));
    EXPECT_THAT(ComplaintsOf("msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=ISO-8859-15\\n\"\n"),
                ElementsAre("1: the charset is 'ISO-8859-15' and not UTF-8: convert the file with msgconv"));
    EXPECT_THAT(ComplaintsOf("msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=utf-8\\n\"\n"),
                IsEmpty());
    EXPECT_THAT(ComplaintsOf("msgid \"a\"\nmsgstr \"\\351\"\n"),
                ElementsAre("1: an escape stands for a byte that is not UTF-8"));
}

TEST_F(PoFile, NulIsAMistake) {
    const std::string sentence = "a character with the number 0, which ends a text";
    EXPECT_THAT(ComplaintsOf("msgid \"a\"\nmsgstr \"b\\000c\"\n"), ElementsAre("2: " + sentence));
    EXPECT_THAT(ComplaintsOf("msgid \"a\"\nmsgstr \"b\\0c\"\n"), ElementsAre("2: " + sentence));
    EXPECT_THAT(ComplaintsOf("msgid \"a\"\nmsgstr \"b\\x00\"\n"), ElementsAre("2: " + sentence));
    EXPECT_THAT(ComplaintsOf("msgid \"\\\\0\"\nmsgstr \"\\101\\x041\"\n"), IsEmpty());
    EXPECT_THAT(ComplaintsOf(std::string("# \0\n", 4)), ElementsAre("1: " + sentence));
}

TEST_F(PoFile, OtherDomainsAreAMistake) {
    EXPECT_THAT(ComplaintsOf("domain \"foo\"\nmsgid \"a\"\nmsgstr \"b\"\n"),
                ElementsAre("1: the texts of the domain 'foo' are not for the library"));
}

TEST_F(PoFile, EmptyTextOnAScreenIsAMistake) {
    EXPECT_THAT(ComplaintsOf("msgctxt \"a\"\nmsgid \"\"\nmsgstr \"b\"\n"),
                ElementsAre("2: the text is empty"));
}

TEST_F(PoFile, DamageIsToldOnceALine) {
    EXPECT_THAT(ComplaintsOf("msgid \"a\nmsgstr b\nfoo\n"),
                ElementsAre(StartsWith("2: "), "3: keyword \"foo\" unknown"));
    EXPECT_THAT(ComplaintsOf("msgid \"a\"\n"), ElementsAre("1: missing 'msgstr' section"));
    std::string many;
    for (int line = 0; line < 100; ++line)
        many += "foo\n";
    EXPECT_THAT(ComplaintsOf(many), SizeIs(100));
}

TEST_F(PoFile, UnreadableFileCannotBeRead) {
    EXPECT_THROW(ReadPo((folder.Path() / "none.po").string(), complaints), UsageError);
    EXPECT_THROW(ReadPo(folder.Path().string(), complaints), UsageError);
}

TEST_F(PoFile, WhatGettextDoesNotTakeCannotBeWritten) {
    Catalogue catalogue;
    CatalogueEntry entry;
    entry.text = u"a";
    entry.line = 7;
    entry.translation = u"\xD83D";
    catalogue.entries.push_back(entry);
    WritePo(catalogue, complaints);
    EXPECT_THAT(Sentences(complaints), ElementsAre("7: half of a character pair, which UTF-8 does not have"));
    complaints.clear();
    catalogue.entries[0].translation = u"b\4";
    WritePo(catalogue, complaints);
    EXPECT_THAT(Sentences(complaints),
                ElementsAre("7: a character with the number 4, which gettext does not take"));
}
