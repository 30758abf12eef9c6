#include <gmock/gmock.h>

#include "CommandFixture.h"
#include "Samples.h"
#include "Utf16.h"
#include "files/TableFile.h"
#include "texts/ShownTexts.h"

using testing::HasSubstr;
using testing::Not;

namespace {

class MergeCommand : public CommandTest {
protected:
    /* The table that is made of two. */
    std::string Merged(std::string_view old, std::string_view fresh) {
        Put("old.tsv", old);
        Put("new.tsv", fresh);
        const Result result = Run(RunMerge, {"old.tsv", "new.tsv", "--output=" + PathOf("out.tsv")});
        EXPECT_EQ(result.code, 0);
        notes = result.errors;
        return Take("out.tsv");
    }

    /* A table of all texts of this version, of which one is different. */
    static std::string AllTexts(WideStringView text = {}, const std::string& translation = {}) {
        std::string table = "# Orvande Online 9.0.0: name this file\n\n";
        for (const ShownText& shown : AllShownTexts()) {
            std::string line = Utf8Of(EscapedText(shown.text));
            line.append("\t").append(text == shown.text ? translation : "XXXX").append("\n");
            table += line;
        }
        return table;
    }

    std::string notes;
};

}  // namespace

TEST_F(MergeCommand, TranslationsOfBothStandInTheOrderOfTheNew) {
    EXPECT_EQ(Merged("# o\n\nA\ta\nB\tb\n", "# n\n\nC\tc\nB\tXXXX\nA\tXXXX\n"),
              "# n\n# o\n\nC\tc\n\nB\tb\n\nA\ta\n");
    EXPECT_EQ(notes, "");
}

TEST_F(MergeCommand, TextsOfSeveralHarvestsAreJoined) {
    EXPECT_EQ(Merged("A\tXXXX\nB\tb\nD\td\n", "C\tXXXX\n"), "#+\n\nC\tXXXX\n\nA\tXXXX\n\nB\tb\n\nD\td\n");
}

TEST_F(MergeCommand, NotesOfTranslatorsAreKeptOnce) {
    EXPECT_EQ(Merged("#+\n\n# one\n# two\n#, fuzzy\n#| AA\nA\ta\n",
                     "#+\n\n# two\n# three\n#: new.cpp:1\nA\tXXXX\n"),
              "#+\n\n# two\n# three\n# one\n#: new.cpp:1\n#, fuzzy\n#| AA\nA\ta\n");
}

TEST_F(MergeCommand, NewTranslationCountsAndTheOtherIsTold) {
    EXPECT_EQ(Merged("#+\n\nA\ta\nB\tb\n", "#+\n\nA\ta\nB\tbb\n"), "#+\n\nA\ta\n\nB\tbb\n");
    EXPECT_EQ(notes, "old.tsv:4: note: line 4 of 'new.tsv' translates 'B' otherwise, and counts\n");
}

TEST_F(MergeCommand, FieldsOfTheHeadAreKept) {
    EXPECT_EQ(
        Merged("#+ Language: fr\n#+ X-A: old\n#+ X-B: old\n\nA\ta\n", "#+ X-A: new\n#+ X-B: \n\nA\tXXXX\n"),
        "#+ X-A: new\n#+ X-B: old\n#+ Language: fr\n\nA\ta\n");
    EXPECT_EQ(Merged("#+ one\n#+ two\n\nA\ta\n", "#+ two\n#+ three\n\nA\tXXXX\n"),
              "#+ two\n#+ three\n#+ one\n\nA\ta\n");
}

TEST_F(MergeCommand, TitleNamesTheNewVersionAndTheLanguage) {
    EXPECT_THAT(Merged("# Orvande Online 8.0.0: French\n\nA\ta\n", AllTexts()),
                testing::StartsWith("# Orvande Online 9.0.0: French\n\n"));
    EXPECT_THAT(Merged("# Orvande Online 9.0.0: name this file\n\nA\tXXXX\n",
                       "# Orvande Online 8.0.0: French\n\nA\ta\n"),
                testing::StartsWith("# Orvande Online 8.0.0: French\n\n"));
}

TEST_F(MergeCommand, TextsThatAreGoneBecomeObsoleteWhenTheNewHasAll) {
    const std::string merged =
        Merged("# o\n\n# note\nGone\tParti\nNever\tXXXX\nCancel\tAnnuler\n", AllTexts());
    EXPECT_THAT(merged, testing::EndsWith("\n\n# note\n#~ Gone\n#~ Parti\n"));
    EXPECT_THAT(merged, HasSubstr("\nCancel\tAnnuler\n"));
    EXPECT_THAT(merged, Not(HasSubstr("Never")));
    EXPECT_EQ(notes, "old.tsv: note: texts that are obsolete now, as 'new.tsv' has them no more: 1\n");
    // The same again changes nothing.
    EXPECT_EQ(Merged(merged, AllTexts()), merged);
    EXPECT_EQ(notes, "");
}

TEST_F(MergeCommand, TextsOfAProgramStayInUseWhenTheirFileIsNamedLast) {
    const std::string merged = Merged(AllTexts(), "#+\n\nOf a program\tD'un programme\nCancel\tAnnuler\n");
    EXPECT_THAT(merged, HasSubstr("\nOf a program\tD'un programme\n"));
    EXPECT_THAT(merged, HasSubstr("\nCancel\tAnnuler\n"));
    EXPECT_THAT(merged, HasSubstr("\nForgot\tXXXX\n"));
    EXPECT_THAT(merged, Not(HasSubstr("#~")));
    EXPECT_EQ(notes, "");
}

TEST_F(MergeCommand, ObsoleteTextsComeBack) {
    EXPECT_EQ(Merged("#+\n\n#~ A\n#~ a\n\n#~ B\n#~ b\n", "#+\n\nA\tXXXX\n"), "#+\n\nA\ta\n\n#~ B\n#~ b\n");
    EXPECT_EQ(Merged("#+\n\n#~ A\n#~ a\n", "#+\n\nA\tb\n"), "#+\n\nA\tb\n");
    EXPECT_EQ(notes, "");
    EXPECT_EQ(Merged("#+\n\nA\tused\n", "#+\n\nB\tb\n\n#~ A\n#~ new\n"), "#+\n\nB\tb\n\n#~ A\n#~ new\n");
    EXPECT_EQ(Merged("#+\n\n#~ A\n#~ old\n", "#+\n\nB\tb\n\n#~ A\n#~ new\n"), "#+\n\nB\tb\n\n#~ A\n#~ new\n");
}

TEST_F(MergeCommand, TranslationOfAPlainTextIsAGuessForOneWithOrnaments) {
    EXPECT_EQ(Merged("#+\n\n# n\nOpen\tOuvrir\n", "#+\n\n&Open...\tXXXX\n"),
              "#+\n\n# n\n#, fuzzy\n#| Open\n&Open...\tOuvrir\n\n# n\nOpen\tOuvrir\n");
}

TEST_F(MergeCommand, TextThatChangedInItsOrnamentsAloneHasItsTranslationAsAGuess) {
    EXPECT_EQ(Merged("#+\n\nOpen:\tOuvrir :\n", "#+\n\n&Open...\tXXXX\n"),
              "#+\n\n#, fuzzy\n#| Open:\n&Open...\tOuvrir :\n\nOpen:\tOuvrir :\n");
    EXPECT_THAT(Merged("#+\n\nOpen:\tOuvrir :\n#~ Open\n#~ Ouvre\n", "#+\n\nOpen.\tXXXX\n"),
                HasSubstr("#| Open:\nOpen.\tOuvrir :\n"));
    EXPECT_THAT(Merged("#+\n\nOpen:\tOuvrir :\nOpen\tOuvrir\n", "#+\n\nOpen.\tXXXX\n"),
                HasSubstr("#| Open\nOpen.\tOuvrir\n"));
    EXPECT_THAT(Merged("#+\n\n...\t...\n", "#+\n\n:\tXXXX\n"), HasSubstr("\n:\tXXXX\n"));
}

TEST_F(MergeCommand, GuessGivesWayToWhatIsNone) {
    EXPECT_EQ(Merged("#+\n\nA\told\n", "#+\n\n#, fuzzy\n#| B\nA\tnew\n"), "#+\n\nA\told\n");
    EXPECT_EQ(Merged("#+\n\n#, fuzzy\n#| B\nA\told\n", "#+\n\nA\tnew\n"), "#+\n\nA\tnew\n");
    EXPECT_EQ(notes, "");
    EXPECT_EQ(Merged("#+\n\n#~ A\n#~ old\n", "#+\n\n#, fuzzy\nA\tnew\n"), "#+\n\n#, fuzzy\nA\tnew\n");
}

TEST_F(MergeCommand, HarvestDoesNotTakeAwayWhatIsKnownOfItsTexts) {
    const std::string old = "#+\n\n#. Main: label\n#: main.c:1\n#, c-format\nHi %s\tSalut %s\n";
    EXPECT_EQ(Merged(old, "Hi %s\tXXXX\n"), old);
    EXPECT_EQ(Merged(old, "#+\n\n#: new.c:2\nHi %s\tXXXX\n"), "#+\n\n#: new.c:2\nHi %s\tSalut %s\n");
}

TEST_F(MergeCommand, LanguageFileGoesToTheStandardOutput) {
    Put("old.po", "msgid \"A\"\nmsgstr \"a\"\n");
    Put("new.txt", "A\tXXXX\n");
    EXPECT_EQ(Run(RunMerge, {"old.po", "new.txt"}).output, Utf16Bytes(u"\xFEFF#+\r\n\r\nA\ta\r\n"));
}

TEST_F(MergeCommand, MistakesInBothAreToldAndNothingIsWritten) {
    Put("old.po", "foo\n");
    Put("new.txt", "A\n");
    const Result result = Run(RunMerge, {"old.po", "new.txt", "--output=" + PathOf("out.po")});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.errors,
              "old.po:1: error: keyword \"foo\" unknown\n"
              "new.txt:1: error: the line has no TAB between a text and its translation\n");
    EXPECT_FALSE(Exists("out.po"));
}

TEST_F(MergeCommand, WhatOneFormCannotHoldIsToldOfItsFile) {
    Put("old.txt", Utf16Bytes(u"\xFEFF#\r\n\r\nA\t\xD83D\r\n"));
    Put("new.tsv", "B\tb\n");
    EXPECT_EQ(Run(RunMerge, {"old.txt", "new.tsv", "--output=" + PathOf("out.tsv")}).errors,
              "old.txt:3: error: half of a character pair, which UTF-8 does not have\n");
    EXPECT_EQ(Run(RunMerge, {"old.txt", "new.tsv", "--output=" + PathOf("out.txt")}).code, 0);
}
