#include <gmock/gmock.h>

#include <set>

#include "CommandFixture.h"
#include "Samples.h"
#include "Utf16.h"
#include "files/OpenedFile.h"
#include "ui/TranslationFile.h"

using testing::HasSubstr;

namespace {

class ConvertCommand : public CommandTest {
protected:
    /* Converts and expects that all is well. */
    void Convert(const std::string& in, const std::string& out) {
        const Result result = Run(RunConvert, {in, out});
        ASSERT_EQ(result.code, 0) << in << " to " << out << ": " << result.errors;
        ASSERT_EQ(result.output + result.errors, "");
    }

    /* Through all forms and back: the second time nothing changes any more. */
    void ConvertAround(const std::string& in) {
        Convert(in, "first.po");
        Convert("first.po", "first.txt");
        Convert("first.txt", "first.tsv");
        Convert("first.tsv", "second.txt");
        Convert("second.txt", "second.po");
        Convert("second.po", "second.tsv");
        EXPECT_EQ(Take("first.txt"), Take("second.txt"));
        EXPECT_EQ(Take("first.tsv"), Take("second.tsv"));
        EXPECT_EQ(Take("first.po"), Take("second.po"));
    }

    void PutHarvest(const std::string& name, const std::set<WideString>& texts) const {
        const OpenedFile file(fopen(PathOf(name).c_str(), "wb"));
        WriteUntranslatedTexts(file.get(), texts);
    }

    /* What the library makes of a file. */
    [[nodiscard]] TranslationTable ReadByLibrary(const std::string& name) const {
        const OpenedFile file(fopen(PathOf(name).c_str(), "rb"));
        TranslationTable table;
        ReadTranslations(file.get(), table);
        return table;
    }
};

constexpr std::string_view quotedText =
    "The Password is not correct. If you have lost your password, click the \"I Forgot\" button.";

}  // namespace

TEST_F(ConvertCommand, LanguagesOfTheLibraryLoseNothing) {
    for (const std::string language : {"French", "German"}) {
        const std::string original = ReadFile(ORVANDE_LANGUAGES "/" + language + ".txt");
        Put("in.txt", original);
        ConvertAround("in.txt");
        EXPECT_EQ(Take("first.txt"), original);
    }
}

TEST_F(ConvertCommand, FileOfAnotherProgramLosesNothingAfterTheFirstTime) {
    Put("in.po",
        "# French translations for Orvande Online package.\n#\nmsgid \"\"\nmsgstr \"\"\n"
        "\"Project-Id-Version: Orvande Online\\n\"\n\"Language: fr\\n\"\n\"MIME-Version: 1.0\\n\"\n"
        "\"Content-Type: text/plain; charset=UTF-8\\n\"\n\"Content-Transfer-Encoding: 8bit\\n\"\n"
        "\"Plural-Forms: nplurals=2; plural=n > 1;\\n\"\n\"X-Generator: Weblate 5.4\\n\"\n\n"
        "#. TRANSLATORS: keep it short\n#: a.cpp:1\n#: b.cpp\n#, fuzzy, c-format\n#| msgid \"%d map\"\n"
        "msgid \"%d maps\"\nmsgstr \"%d cartes\"\n\n"
        "#. Sign in: label\nmsgctxt \"Elsewhere\"\nmsgid \"\"\n\"a \\\"b\\\" \\\\c\\td\\n\"\n\"e\"\nmsgstr "
        "\"\"\n\n"
        "# Was: \"x\"\n#~ msgctxt \"Sign in\"\n#~ msgid \"Log in\"\n#~ msgstr \"Connexion\"\n");
    const std::string original = Take("in.po");
    ConvertAround("in.po");
    // Two references stand on one line now.
    EXPECT_EQ(Take("first.po"), std::string(original).replace(original.find("\n#: b.cpp"), 4, " "));
}

TEST_F(ConvertCommand, HarvestBecomesAFileWhoseTextsTheLibraryFinds) {
    const std::set<WideString> texts = {u"Cancel", Utf16Of(quotedText), u"C:\\data\tx"};
    PutHarvest("harvest.txt", texts);
    Convert("harvest.txt", "out.txt");
    std::set<WideString> keys;
    for (const auto& [text, translation] : ReadByLibrary("out.txt")) {
        keys.insert(text.Text());
        EXPECT_EQ(translation, u"XXXX");
    }
    EXPECT_EQ(keys, texts);
    EXPECT_FALSE(ReadByLibrary("harvest.txt").contains(TextKey(Utf16Of(quotedText))));
}

TEST_F(ConvertCommand, HarvestTellsWhereItsTextsAreShown) {
    PutHarvest("harvest.txt", {u"Cancel", u"The server returned error code %d", u"Of a program"});
    Convert("harvest.txt", "out.po");
    const std::string po = Take("out.po");
    EXPECT_THAT(po, HasSubstr("#. Sign in: "));
    EXPECT_THAT(po, HasSubstr("msgctxt \"Sign in\"\nmsgid \"Cancel\"\nmsgstr \"\"\n"));
    EXPECT_THAT(
        po,
        HasSubstr("#, c-format\nmsgctxt \"Create account\"\nmsgid \"The server returned error code %d\"\n"));
    EXPECT_THAT(po, HasSubstr("\n\nmsgid \"Of a program\"\n"));
}

TEST_F(ConvertCommand, HarvestThatIsPartlyTranslatedKeepsItsQuotes) {
    Put("harvest.txt", Utf16Bytes(u"\xFEFF"
                                  u"Cancel\tXXXX\r\n" +
                                  Utf16Of(quotedText) + u"\tAppuyez sur \"Oubli\xE9\".\r\n"));
    Convert("harvest.txt", "out.txt");
    const TranslationTable table = ReadByLibrary("out.txt");
    EXPECT_EQ(table.at(Utf16Of(quotedText)), u"Appuyez sur \"Oubli\xE9\".");
    ConvertAround("harvest.txt");
}

TEST_F(ConvertCommand, TableOfASpreadsheetIsUnderstood) {
    // As LibreOffice saves a table: TABs to the last column, quotes around what holds quotes, CR LF.
    Put("in.tsv",
        "# Orvande Online 1.0.0: French\t\r\n\t\r\n\"# He said \"\"no\"\".\"\t\r\n#. Sign in: label\t\r\n"
        "User ID\tIdentifiant\r\n\t\r\n\"Say \"\"hi\"\"\"\t\"Dites \"\"salut\"\"\"\r\nCancel\t\r\n");
    Convert("in.tsv", "out.tsv");
    EXPECT_THAT(
        Take("out.tsv"),
        testing::StartsWith("# Orvande Online 1.0.0: French\n\n# He said \"no\".\n#. Sign in: label\n"
                            "User ID\tIdentifiant\n\n\"Say \"\"hi\"\"\"\t\"Dites \"\"salut\"\"\"\n\n#"));
    EXPECT_THAT(Take("out.tsv"), HasSubstr("Cancel\tXXXX\n"));
}

TEST_F(ConvertCommand, Utf8BecomesWhatTheLibraryReads) {
    for (const std::string mark : {"", "\xEF\xBB\xBF"}) {
        Put("in.txt", mark +
                          "Open\t\xC3\x96"
                          "ffnen\n");
        Convert("in.txt", "in.txt");
        EXPECT_EQ(ReadByLibrary("in.txt").at(u"Open"),
                  u"\xD6"
                  u"ffnen");
    }
}

TEST_F(ConvertCommand, OutputMayBeTheStandardOutput) {
    Put("in.po", "msgid \"Open\"\nmsgstr \"Ouvrir\"\n");
    EXPECT_EQ(Run(RunConvert, {"in.po", "-"}).output, Utf16Bytes(u"\xFEFF#+\r\n\r\nOpen\tOuvrir\r\n"));
}

TEST_F(ConvertCommand, MistakesAreToldAndNothingIsWritten) {
    Put("in.txt", "Open\tOuvrir\nClose\n\xC3\n");
    Put("out.po", "before");
    const Result result = Run(RunConvert, {"in.txt", "out.po"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.errors,
              "in.txt:2: error: the line has no TAB between a text and its translation\n"
              "in.txt:3: error: the line has no TAB between a text and its translation\n");
    EXPECT_EQ(Take("out.po"), "before");
    Put("in.po", "msgid \"a\\rb\"\nmsgstr \"\"\n");
    EXPECT_EQ(Run(RunConvert, {"in.po", "out.txt"}).errors,
              "in.po:1: error: a carriage return, which the library drops\n");
    EXPECT_FALSE(Exists("out.txt"));
}

TEST_F(ConvertCommand, OfAFileWithMistakesNothingIsLost) {
    Put("in.po",
        "msgctxt \"1\"\nmsgid \"Open\"\nmsgstr \"Ouvrir\"\n\n"
        "msgctxt \"2\"\nmsgid \"Open\"\nmsgstr \"Ouvert\"\n");
    EXPECT_EQ(Run(RunConvert, {"in.po", "out.tsv"}).errors,
              "in.po:6: error: the text has another translation in line 2, and the library knows only one\n");
}

TEST_F(ConvertCommand, TableOfACodePageIsNotGuessed) {
    Put("a.tsv", "Menu\tMen\xF9\n");
    const Result result = Run(RunConvert, {"a.tsv", "a.txt"});
    EXPECT_EQ(result.code, 1);
    EXPECT_THAT(result.errors, HasSubstr("a.tsv:1: error: the file is not UTF-8"));
}

TEST_F(ConvertCommand, WhatCannotBeDoneIsOneSentence) {
    Put("in.txt", "Open\n");
    EXPECT_EQ(Run(RunConvert, {"in.txt", "out.csv"}).errors,
              "the name 'out.csv' does not end in .txt, .tsv, .po or .pot, which tells the form");
    EXPECT_EQ(Run(RunConvert, {"in.txt"}).errors, "1 file is named; the command is convert IN OUT");
    const Result none = Run(RunConvert, {"none.txt", "out.po"});
    EXPECT_EQ(none.code, 2);
    EXPECT_EQ(none.errors, "'none.txt' cannot be read: No such file or directory");
}
