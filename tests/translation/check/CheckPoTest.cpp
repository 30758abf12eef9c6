/* What `check` says of .po files: the same, with their lines. */
#include "CheckFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class CheckPo : public CheckFixture {
protected:
    /* A .po file of all texts, each translated by itself, that begins with 4 lines of head and a blank
     * one. */
    CheckPo() {
        lines = {"msgid \"\"", "msgstr \"\"", "\"Content-Type: text/plain; charset=UTF-8\\n\"",
                 "\"Language: fr\\n\"", ""};
        for (const ShownText& shown : AllShownTexts()) {
            const std::string text = Escaped(Utf8Of(shown.text));
            lines.insert(lines.end(), {"msgid \"" + text + "\"", "msgstr \"" + text + "\"", ""});
        }
    }

    /* Puts other lines in place of an entry's second one; the number of the first line of the entry. */
    size_t Translate(const std::string& text, const std::vector<std::string>& others) {
        const auto found = std::ranges::find(lines, "msgid \"" + text + "\"");
        const auto line = static_cast<size_t>(found - lines.begin()) + 1;
        lines.erase(found + 1);
        lines.insert(lines.begin() + static_cast<ptrdiff_t>(line), others.begin(), others.end());
        return line;
    }

    std::vector<std::string> CheckLines() { return Check(Joined("\n"), "fr.po"); }

private:
    static std::string Escaped(const std::string& text) {
        std::string escaped;
        for (const char unit : text)
            escaped += unit == '\n' ? "\\n" : unit == '"' ? "\\\"" : std::string(1, unit);
        return escaped;
    }
};

}  // namespace

TEST_F(CheckPo, ACompleteTranslationIsPraised) {
    EXPECT_THAT(CheckLines(), IsEmpty());
    EXPECT_EQ("FILE: 14 texts, complete\n", said);
}

TEST_F(CheckPo, AnEmptyTranslationIsNoneYet) {
    const size_t line = Translate("Welcome", {"msgstr \"\""});
    EXPECT_THAT(CheckLines(), ElementsAre(Error(line, "'Welcome' is not translated yet")));
}

TEST_F(CheckPo, AGuessHasToBeConfirmed) {
    lines[5] = "#, fuzzy\n" + lines[5];
    lines[8] = "#, fuzzy\n" + lines[8];
    EXPECT_THAT(CheckLines(),
                ElementsAre(Error(11,
                                  "the translation of 'Welcome' is a guess; confirm it by removing "
                                  "'fuzzy' from the line of its flags")));
}

TEST_F(CheckPo, QuotesAndUtf8AreAsTheyAreInSuchFiles) {
    Translate("Welcome", {"msgstr \"\\\"Reçu\\\"\""});
    EXPECT_THAT(CheckLines(), IsEmpty());
}

TEST_F(CheckPo, TextsAreJudgedAsInTables) {
    const size_t line = Translate("Save it", {"msgstr \"Garder le mot\""});
    lines.resize(lines.size() - 3);
    const size_t last = lines.size();
    EXPECT_THAT(
        CheckLines(),
        ElementsAre(
            Error(line, "'Garder le mot' needs 65 pixels, its check box on the screen 'Sign in' has 56"),
            Error(last, "the text '%d maps' is missing (Everywhere: message)")));
}

TEST_F(CheckPo, ACarriageReturnIsDropped) {
    const size_t line = Translate("Welcome", {"msgstr \"Wel\\rcome\""});
    EXPECT_THAT(CheckLines(), ElementsAre(Error(line, "a carriage return, which the library drops")));
}

TEST_F(CheckPo, AnotherFileUnderThatNameIsToldOnce) {
    EXPECT_THAT(Check("# Head\n\nWelcome\tBienvenue\nMenu\tMenu\n", "fr.po"),
                ElementsAre(Error(1, "the file is a table: give it a name that ends in .tsv")));
    EXPECT_THAT(Check("\xFF\xFE" + Utf16Bytes(u"Welcome\tBienvenue\r\n"), "fr.po"),
                ElementsAre(Error(1,
                                  "the file is UTF-16: save it as UTF-8, or give it a name that ends in .txt "
                                  "if it is a language file")));
}

TEST_F(CheckPo, OfAFileThatCannotBeReadNothingIsMissing) {
    const size_t line = Translate("Welcome", {"msgstr \"Welcome"});
    EXPECT_THAT(CheckLines(), ElementsAre(Error(line + 2, "end-of-line within string")));
}

TEST_F(CheckPo, WhatADeclaredCharsetMeansDependsOnTheBytes) {
    const std::string sentence = "the charset is 'ISO-8859-1' and not UTF-8: ";
    lines[2] = "\"Content-Type: text/plain; charset=ISO-8859-1\\n\"";
    Translate("Welcome", {"msgstr \"re\u00E7u\""});
    EXPECT_THAT(CheckLines(), ElementsAre(Error(1, sentence + "write UTF-8 there, which the file is")));
    Translate("Welcome", {"msgstr \"re\xE7u\""});
    EXPECT_THAT(CheckLines(), ElementsAre(Error(3, sentence + "convert the file with msgconv")));
}
