/* What `check` says of characters that a handheld does not show as they are meant. */
#include "CheckFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class CheckCharacters : public CheckFixture {
protected:
    /* What is said of a translation of the caption. */
    std::vector<std::string> CheckCaption(const std::string& translation) {
        Replace("Welcome", "Welcome\t" + translation);
        return Check();
    }

    static std::string InCaption(const std::string& sentence) { return Error(2, sentence); }
};

std::string OwnAccent(const std::string& letter, const std::string& advice) {
    return "the accent of '" + letter +
           "' is a character of its own, which a handheld shows beside the letter; " + advice;
}

}  // namespace

TEST_F(CheckCharacters, AnAccentIsPartOfItsLetter) {
    EXPECT_THAT(CheckCaption("Créé à Ầ"), IsEmpty());
    EXPECT_THAT(CheckCaption("Cre\u0301e\u0301"),
                ElementsAre(InCaption(OwnAccent("e\u0301", "write both as one, U+00E9"))));
    EXPECT_THAT(CheckCaption("A\u0302\u0300"),
                ElementsAre(InCaption(OwnAccent("A\u0302\u0300", "write both as one, U+1EA6"))));
}

TEST_F(CheckCharacters, ALetterMayHaveNoSuchAccent) {
    const std::string advice = "no character is both, so write another";
    EXPECT_THAT(CheckCaption("x\u0301"), ElementsAre(InCaption(OwnAccent("x\u0301", advice))));
    EXPECT_THAT(CheckCaption("\u0301"), ElementsAre(InCaption(OwnAccent("\u0301", advice))));
}

TEST_F(CheckCharacters, AnAccentOfItsOwnIsToldInEveryFormOfFile) {
    const std::string error = OwnAccent("e\u0301", "write both as one, U+00E9");
    const size_t line = Replace("Save it", "Save it\tete\u0301s");
    EXPECT_THAT(Check(), ElementsAre(Error(line, error)));
    EXPECT_THAT(Check(Joined("\n"), "French.tsv"), ElementsAre(Error(line, error)));
    EXPECT_THAT(Check("msgid \"Welcome\"\nmsgstr \"Cre\u0301e\"\n", "fr.po"),
                testing::Contains(Error(1, error)));
}

TEST_F(CheckCharacters, AnAccentOfItsOwnTakesNoRoom) {
    const std::string letters = "o\u0302o\u0302o\u0302o\u0302o\u0302o\u0302";
    const size_t line = Replace("Save it", "Save it\t" + letters);
    EXPECT_THAT(Check(), ElementsAre(Error(line, OwnAccent("o\u0302", "write both as one, U+00F4"))));
}

TEST_F(CheckCharacters, NamesAreTheSameHoweverTheirAccentsAreWritten) {
    const size_t line = Replace("Forgot", "Forgot\tOublie\u0301");
    Replace("\"Press \"\"I Forgot\"\".\"", "\"Press \"\"I Forgot\"\".\"\tTapez « Oublié »");
    EXPECT_THAT(Check(), ElementsAre(Error(line, OwnAccent("e\u0301", "write both as one, U+00E9"))));
}

TEST_F(CheckCharacters, Utf8ThatWasTakenForBytesIsTold) {
    const std::string end = ", whose UTF-8 it took for single bytes; write that";
    EXPECT_THAT(CheckCaption("MenÃ¼"),
                ElementsAre(InCaption("another program has made 'MenÃ¼' of 'Menü'" + end)));
    EXPECT_THAT(CheckCaption("lâ€™Ã‰tat"),
                ElementsAre(InCaption("another program has made 'lâ€™Ã‰tat' of 'l’État'" + end)));
}

TEST_F(CheckCharacters, LettersBesideMarksAreNoBytes) {
    for (const std::string right : {"„MENÜ“", "« oublié… »", "Spaß – ja", "É", "Ã¿Ã", "Åå", "100 €"})
        EXPECT_THAT(CheckCaption(right), IsEmpty()) << right;
}

TEST_F(CheckCharacters, CapitalsBeforeASignAreNoBytes) {
    for (const std::string right : {"MENÜ…", "OUBLIÉ\u00A0?", "CAFÉ®", "PORQUÊ“", "MENÚ…", "PIÙ…", "LUNEDÌ…",
                                    "MENÙ\u00A0»", "IRMÃ…", "GÅ\u00A0!", "oublié…”", "Spaß…", "NIÑ€"})
        EXPECT_THAT(CheckCaption(right), IsEmpty()) << right;
}

TEST_F(CheckCharacters, BytesAreToldInEveryLanguage) {
    const std::pair<std::string, std::string> taken[] = {
        {"BÅ‚Ä…d", "Błąd"}, {"IDÂ\u00A0:", "ID\u00A0:"}, {"aÈ™a", "așa"},   {"XÉ™ta", "Xəta"},
        {"áº¢nh", "Ảnh"},   {"DÃ©jÃ\u00A0", "Déjà"},     {"Î¼Îµ", "με"},    {"Ð½Ðµ ID", "не ID"},
        {"×œØ§", "לا"},     {"ID ã‚’", "ID を"},         {"eÌ€", "e\u0300"}};
    for (const auto& [garbage, meant] : taken) {
        const std::vector<std::string> told = CheckCaption(garbage);
        ASSERT_EQ(1U, told.size()) << meant;
        EXPECT_THAT(told[0], testing::HasSubstr("' of '" + meant + "', whose")) << garbage;
    }
}

TEST_F(CheckCharacters, WhatIsNotToBeReadIsTold) {
    const std::pair<std::string, std::string> unreadable[] = {{"A\x07z", "0007"},   {"A\u0085z", "0085"},
                                                              {"A\u00ADz", "00AD"}, {"A\u2028z", "2028"},
                                                              {"A\uFEFFz", "FEFF"}, {"A\uFFFDz", "FFFD"}};
    for (const auto& [translation, number] : unreadable) {
        const std::vector<std::string> told = CheckCaption(translation);
        ASSERT_EQ(1U, told.size()) << number;
        EXPECT_THAT(told[0], testing::StartsWith("FILE:2: error: the character U+" + number + " in 'A"));
        EXPECT_THAT(told[0], testing::EndsWith("z' is none to be read; delete it, or write what is meant"));
    }
}

TEST_F(CheckCharacters, BlanksThatAHandheldLacksAreTold) {
    for (const std::string number : {"2000", "200A", "202F", "205F"}) {
        const auto unit = static_cast<WCHAR>(std::stoi(number, nullptr, 16));
        EXPECT_THAT(CheckCaption("A" + Utf8Of(WideString(1, unit)) + ":"),
                    ElementsAre(InCaption("a handheld's font lacks the blank U+" + number +
                                          "; write the no-break space, U+00A0, or a space")));
    }
    EXPECT_THAT(CheckCaption("A\u00A0:"), IsEmpty());
}

TEST_F(CheckCharacters, HalfOfAPairIsNoCharacter) {
    for (const WCHAR half : {WCHAR{0xD83D}, WCHAR{0xDE00}}) {
        WideString file = u"\xFEFFWelcome\tA";
        file += half;
        EXPECT_THAT(Check(Utf16Bytes(file + u"z\r\n")),
                    testing::Contains(testing::HasSubstr("the character U+D")));
    }
}

TEST_F(CheckCharacters, EveryLanguageHasItsLetters) {
    for (const std::string right : {"Καλώς ορίσατε", "Добро", "ברוך הבא", "أهلا", "欢迎", "ยินดี",
                                    "សូម\u200Bស្វាគមន៍", "می\u200Cخواهم", "😀"})
        EXPECT_THAT(CheckCaption(right), IsEmpty()) << right;
}

TEST_F(CheckCharacters, ABackslashIsSeen) {
    const std::string sentence =
        "the user would see a backslash; a line break is one backslash and n, nothing else needs one";
    const size_t line = Replace("It failed.\\nTry again.", "It failed.\\nTry again.\tA\\\\nB");
    EXPECT_THAT(Check(), ElementsAre(Error(line, sentence)));
    Replace("It failed.\\nTry again.", "It failed.\\nTry again.\tA\\B");
    EXPECT_THAT(Check(), ElementsAre(Error(line, sentence)));
}
