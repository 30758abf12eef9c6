/* What `check` says of the bytes of files. */
#include "CheckFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class CheckEncoding : public CheckFixture {
protected:
    /* The lines hold a letter that is not in ASCII, in the second one. */
    CheckEncoding() { Replace("Welcome", "Welcome\tSoyez reçu"); }

    static std::string Swapped(std::string bytes) {
        for (size_t at = 0; at + 1 < bytes.size(); at += 2)
            std::swap(bytes[at], bytes[at + 1]);
        return bytes;
    }

    const std::string mending = "; mend it with: tools/translation convert FILE NEW.txt";
};

}  // namespace

TEST_F(CheckEncoding, Utf16AndLatin1AreRead) {
    EXPECT_THAT(Check(), IsEmpty());
    std::string latin1 = Joined("\n");
    latin1.replace(latin1.find("ç"), 2, "\xE7");
    EXPECT_THAT(Check(latin1), IsEmpty());
}

TEST_F(CheckEncoding, OfUtf8TheLibraryShowsTheBytes) {
    EXPECT_THAT(
        Check(Joined("\n")),
        ElementsAre(Error(2, "the file is UTF-8, and the library would show 'reÃ§u' for 'reçu'" + mending)));
}

TEST_F(CheckEncoding, BytesThatAreNoCharactersAreShownAsBoxes) {
    Replace("Welcome", "Welcome\tÀ toi");
    EXPECT_THAT(
        Check(Joined("\n")),
        ElementsAre(Error(2, "the file is UTF-8, and the library would show 'Ã□' for 'À'" + mending)));
}

TEST_F(CheckEncoding, AllOtherMistakesOfAUtf8FileAreToldAsWell) {
    const size_t line = Replace("Menu", "Menü\tMenü");
    ASSERT_EQ(3U, Check(Joined("\n")).size());
    EXPECT_THAT(Check(Joined("\n"))[1],
                Error(line, "'Menü' is no text of Orvande Online 1.0.0; did you mean 'Menu'?"));
}

TEST_F(CheckEncoding, TheMarkOfUtf8IsTakenForText) {
    Replace("Welcome", "Welcome\tHello");
    EXPECT_THAT(Check("\xEF\xBB\xBF" + Joined("\n")),
                ElementsAre(Error(
                    1, "the file begins with the byte order mark of UTF-8, which the library takes for text" +
                           mending)));
}

TEST_F(CheckEncoding, CommentsInUtf8DoNoHarm) {
    Replace("Welcome", "Welcome\tHello");
    lines.insert(lines.begin(), "# Français");
    EXPECT_THAT(Check(Joined("\n")), IsEmpty());
}

TEST_F(CheckEncoding, ATableIsUtf8) {
    EXPECT_THAT(Check(Joined("\n"), "French.tsv"), IsEmpty());
}

TEST_F(CheckEncoding, ALineThatIsNoUtf8IsFoundAmongOthers) {
    Replace("Welcome", "Welcome\tÉté");
    Replace("&Open...", "&Open...\t&Où");
    const size_t line = Replace("Save it", "Save it\tM\xFC \x80");
    EXPECT_THAT(
        Check(Joined("\n")),
        ElementsAre(Error(line, "the file is neither UTF-16 nor UTF-8 nor Latin-1: save it as UTF-8")));
}

TEST_F(CheckEncoding, AmongLinesInLatin1OneMayBeUtf8) {
    Replace("Menu", "Menu\tMen\xFC");
    EXPECT_THAT(Check(Joined("\n")),
                testing::Contains(Error(2,
                                        "another program has made 'Soyez reÃ§u' of 'Soyez reçu', whose UTF-8 "
                                        "it took for single bytes; write that")));
}

TEST_F(CheckEncoding, WhatIsHardlyLatinIsNotLatin1) {
    Replace("Welcome", "Welcome\tHello");
    for (std::string& line : lines) {
        const size_t tab = line.find('\t');
        line = line.substr(0, tab + 1) + "\xCC\xE5\xED\xFE";
    }
    EXPECT_THAT(Check(Joined("\n")),
                testing::Contains(Error(1,
                                        "the file has no byte order mark, and the library would show 'Ìåíþ' "
                                        "as in Latin-1: save it as UTF-8, then mend it with: "
                                        "tools/translation convert FILE NEW.txt")));
}

TEST_F(CheckEncoding, Utf16NeedsAMark) {
    EXPECT_THAT(
        Check(LanguageFile().substr(2)),
        ElementsAre(Error(1,
                          "the file is UTF-16 without a byte order mark, which the library takes for single "
                          "bytes" +
                              mending)));
}

TEST_F(CheckEncoding, Utf16HasOneByteOrder) {
    EXPECT_THAT(
        Check(Swapped(LanguageFile())),
        ElementsAre(Error(1,
                          "the bytes of the UTF-16 characters are in the wrong order (big-endian), in which "
                          "the library finds no text" +
                              mending)));
}

TEST_F(CheckEncoding, AnOddLengthIsHalfACharacter) {
    EXPECT_THAT(Check(LanguageFile() + "x"),
                ElementsAre(Error(14, "the file ends with half a character (an odd number of bytes)")));
}

TEST_F(CheckEncoding, APathWithBlanksIsQuotedForTheShell) {
    const std::vector<std::string> told = Check(Joined("\n"), "my French.txt");
    ASSERT_EQ(1U, told.size());
    EXPECT_THAT(told[0], testing::EndsWith("convert 'FILE' NEW.txt"));
}

TEST_F(CheckEncoding, TheCharactersOfATableThatIsNotUtf8AreAGuess) {
    std::string latin1 = Joined("\n");
    EXPECT_THAT(Check(latin1, "French.tsv"), IsEmpty());
    latin1.replace(latin1.find("\u00E7"), 2, "\xE7");
    EXPECT_THAT(Check(latin1, "French.tsv"),
                ElementsAre(Error(2, "the file is not UTF-8, and 're\u00E7u' a guess: save it as UTF-8")));
}
