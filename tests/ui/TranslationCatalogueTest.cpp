/* Which language is in use, and what is shown for a text. */
#include "ui/CatalogueFixture.h"

TEST_F(Catalogue, StartsWithoutALanguageAndShowsEveryTextAsItIs) {
    EXPECT_EQ(TEXT(""), catalogue.CurrentLanguage());
    EXPECT_EQ(TEXT("Open"), catalogue.Translate(TEXT("Open")));
    EXPECT_EQ(Texts{TEXT("Open")}, catalogue.UntranslatedTexts());
}

TEST_F(Catalogue, EmptyLanguageLoadsNothingAndCollectsEachTextOnce) {
    PutLanguage({}, "Open\tnever\n");
    EXPECT_FALSE(SetLanguage({}));
    EXPECT_EQ(TEXT("Open"), catalogue.Translate(TEXT("Open")));
    catalogue.Translate(TEXT("Open"));
    catalogue.Translate(TEXT("Close"));
    EXPECT_EQ((Texts{TEXT("Close"), TEXT("Open")}), catalogue.UntranslatedTexts());
}

TEST_F(Catalogue, LanguageFileLiesBesideTheModuleAndIsNamedAfterBoth) {
    PutLanguage(TEXT("French"), "Open\tOuvrir\r\n");
    EXPECT_TRUE(SetLanguage(TEXT("French")));
    EXPECT_EQ(TEXT("French"), catalogue.CurrentLanguage());
    EXPECT_EQ(TEXT("Ouvrir"), catalogue.Translate(TEXT("Open")));
}

TEST_F(Catalogue, ModuleNameLosesOnlyItsLastExtension) {
    PutFile(PathOf(TEXT("Lib.v2.French.txt")), "Open\tOuvrir\n");
    EXPECT_TRUE(catalogue.SetLanguage(TEXT("French"), PathOf(TEXT("Lib.v2.dll"))));
}

TEST_F(Catalogue, ModuleNameMayHaveNoExtension) {
    PutLanguage(TEXT("French"), "Open\tOuvrir\n");
    EXPECT_TRUE(catalogue.SetLanguage(TEXT("French"), PathOf(TEXT("Lib"))));
}

TEST_F(Catalogue, UnknownModulePathMeansThatNoFileIsFound) {
    EXPECT_FALSE(catalogue.SetLanguage(TEXT("French"), {}));
    EXPECT_EQ(TEXT(""), catalogue.CurrentLanguage());
}

TEST_F(Catalogue, SameLanguageAgainChangesNothing) {
    PutLanguage(TEXT("French"), "Open\tOuvrir\n");
    ASSERT_TRUE(SetLanguage(TEXT("French")));
    PutLanguage(TEXT("French"), "Open\tAutre\n");
    catalogue.Translate(TEXT("unknown"));
    EXPECT_FALSE(SetLanguage(TEXT("French")));
    EXPECT_EQ(TEXT("Ouvrir"), catalogue.Translate(TEXT("Open")));
    EXPECT_EQ(Texts{TEXT("unknown")}, catalogue.UntranslatedTexts());
}

TEST_F(Catalogue, LanguageWithoutAFileKeepsLanguageAndTable) {
    PutLanguage(TEXT("French"), "Open\tOuvrir\n");
    ASSERT_TRUE(SetLanguage(TEXT("French")));
    catalogue.Translate(TEXT("unknown"));
    EXPECT_FALSE(SetLanguage(TEXT("German")));
    EXPECT_EQ(TEXT("French"), catalogue.CurrentLanguage());
    EXPECT_EQ(TEXT("Ouvrir"), catalogue.Translate(TEXT("Open")));
    EXPECT_EQ(Texts{TEXT("unknown")}, catalogue.UntranslatedTexts());
}

TEST_F(Catalogue, FileWithoutARecordEmptiesTheTableButKeepsTheLanguageName) {
    PutLanguage(TEXT("French"), "Open\tOuvrir\n");
    PutLanguage(TEXT("German"), "nothing here\n");
    ASSERT_TRUE(SetLanguage(TEXT("French")));
    catalogue.Translate(TEXT("unknown"));
    EXPECT_FALSE(SetLanguage(TEXT("German")));
    EXPECT_EQ(TEXT("French"), catalogue.CurrentLanguage());
    EXPECT_EQ(Texts{}, catalogue.UntranslatedTexts());
    EXPECT_EQ(TEXT("Open"), catalogue.Translate(TEXT("Open")));
}

TEST_F(Catalogue, EnglishNeedsNoFileAndEmptiesTableAndSet) {
    PutLanguage(TEXT("French"), "Open\tOuvrir\n");
    ASSERT_TRUE(SetLanguage(TEXT("French")));
    catalogue.Translate(TEXT("unknown"));
    EXPECT_TRUE(SetLanguage(TEXT("English")));
    EXPECT_EQ(TEXT("English"), catalogue.CurrentLanguage());
    EXPECT_EQ(Texts{}, catalogue.UntranslatedTexts());
    EXPECT_EQ(TEXT("Open"), catalogue.Translate(TEXT("Open")));
}

TEST_F(Catalogue, EnglishWithAFileIsLoadedLikeAnyOther) {
    PutLanguage(TEXT("English"), "Open\tOpen up\n");
    EXPECT_TRUE(SetLanguage(TEXT("English")));
    EXPECT_EQ(TEXT("Open up"), catalogue.Translate(TEXT("Open")));
}

TEST_F(Catalogue, EnglishIsMeantExactly) {
    EXPECT_FALSE(SetLanguage(TEXT("english")));
    EXPECT_FALSE(SetLanguage(TEXT("English ")));
}

TEST_F(Catalogue, LoadingAFileReplacesTheTableAndForgetsTheUntranslatedTexts) {
    PutFile(PathOf(TEXT("a.txt")), "one\tun\n");
    PutFile(PathOf(TEXT("b.txt")), "two\tdeux\n");
    EXPECT_TRUE(catalogue.LoadTranslationFile(PathOf(TEXT("a.txt"))));
    catalogue.Translate(TEXT("two"));
    EXPECT_TRUE(catalogue.LoadTranslationFile(PathOf(TEXT("b.txt"))));
    EXPECT_EQ(Texts{}, catalogue.UntranslatedTexts());
    EXPECT_EQ(TEXT("one"), catalogue.Translate(TEXT("one")));
    EXPECT_EQ(TEXT("deux"), catalogue.Translate(TEXT("two")));
}

TEST_F(Catalogue, FileThatCannotBeOpenedChangesNothing) {
    PutFile(PathOf(TEXT("a.txt")), "one\tun\n");
    ASSERT_TRUE(catalogue.LoadTranslationFile(PathOf(TEXT("a.txt"))));
    EXPECT_FALSE(catalogue.LoadTranslationFile(PathOf(TEXT("missing.txt"))));
    EXPECT_FALSE(catalogue.LoadTranslationFile({}));
    EXPECT_EQ(TEXT("un"), catalogue.Translate(TEXT("one")));
}

TEST_F(Catalogue, TextWithItsOrnamentsIsFoundWithoutThem) {
    PutLanguage(TEXT("French"), "Open\tOuvrir\n");
    ASSERT_TRUE(SetLanguage(TEXT("French")));
    for (const WCHAR* text : {TEXT("&Open..."), TEXT("Open:"), TEXT("\"Open\""), TEXT("O.p:e&n\"")})
        EXPECT_EQ(TEXT("Ouvrir"), catalogue.Translate(text));
    EXPECT_EQ(Texts{}, catalogue.UntranslatedTexts());
}

TEST_F(Catalogue, ExactTextGoesBeforeTheOneWithoutOrnaments) {
    PutLanguage(TEXT("French"), "Open\tOuvrir\n&Open...\t&Ouvrir...\n");
    ASSERT_TRUE(SetLanguage(TEXT("French")));
    EXPECT_EQ(TEXT("&Ouvrir..."), catalogue.Translate(TEXT("&Open...")));
}

TEST_F(Catalogue, TextThatIsNotFoundIsCollectedWithItsOrnaments) {
    EXPECT_EQ(TEXT("&Open..."), catalogue.Translate(TEXT("&Open...")));
    EXPECT_EQ(Texts{TEXT("&Open...")}, catalogue.UntranslatedTexts());
}

TEST_F(Catalogue, OtherMarksAreNoOrnaments) {
    PutLanguage(TEXT("French"), "Open\tOuvrir\n");
    ASSERT_TRUE(SetLanguage(TEXT("French")));
    for (const WCHAR* text : {TEXT("Open!"), TEXT("Open "), TEXT("'Open'"), TEXT("Open\x2026")})
        EXPECT_EQ(WideString(text), catalogue.Translate(text));
}

TEST_F(Catalogue, OrnamentsAloneAreLookedUpAsAnEmptyText) {
    EXPECT_EQ(TEXT("..."), catalogue.Translate(TEXT("...")));
    EXPECT_EQ(Texts{TEXT("...")}, catalogue.UntranslatedTexts());
}

TEST_F(Catalogue, CaseAndFormMatter) {
    PutLanguage(TEXT("French"), "Open\tOuvrir\n");
    ASSERT_TRUE(SetLanguage(TEXT("French")));
    EXPECT_EQ(TEXT("open"), catalogue.Translate(TEXT("open")));
    EXPECT_EQ(TEXT("OPEN"), catalogue.Translate(TEXT("OPEN")));
}

TEST_F(Catalogue, TextsAreOrderedByCodeUnit) {
    for (const WCHAR* text : {TEXT("b"), TEXT("B"), TEXT("\xFF5E"), TEXT("\xD83D\xDE00"), TEXT("a")})
        catalogue.Translate(text);
    const std::vector<WideString> order(catalogue.UntranslatedTexts().begin(),
                                        catalogue.UntranslatedTexts().end());
    EXPECT_EQ(
        (std::vector<WideString>{TEXT("B"), TEXT("a"), TEXT("b"), TEXT("\xD83D\xDE00"), TEXT("\xFF5E")}),
        order);
}

TEST_F(Catalogue, NarrowTextIsWidenedWithItsSign) {
    EXPECT_EQ(TEXT("Open"), catalogue.Translate("Open"));
    EXPECT_EQ(TEXT("caf\xFFE9"), catalogue.Translate("caf\xE9"));
}

TEST_F(Catalogue, NarrowAndPointerFormsFindTheSameTranslation) {
    PutLanguage(TEXT("French"), "Open\tOuvrir\n");
    ASSERT_TRUE(SetLanguage(TEXT("French")));
    EXPECT_EQ(TEXT("Ouvrir"), catalogue.Translate("Open"));
    EXPECT_EQ(TEXT("Ouvrir"), catalogue.Translate(TEXT("Open")));
    EXPECT_EQ(&catalogue.Translate("Open"), &catalogue.Translate(WideString(TEXT("&Open"))));
}

TEST_F(Catalogue, EmptyTextMayHaveATranslation) {
    PutLanguage(TEXT("French"), "\"\tRien\n");
    ASSERT_TRUE(SetLanguage(TEXT("French")));
    EXPECT_EQ(TEXT("Rien"), catalogue.Translate(static_cast<const WCHAR*>(nullptr)));
    EXPECT_EQ(TEXT("Rien"), catalogue.Translate(TEXT("")));
    EXPECT_EQ(TEXT("Rien"), catalogue.Translate(WideString()));
    EXPECT_EQ(TEXT("Rien"), catalogue.Translate(TEXT("...")));
}

TEST_F(Catalogue, PointerFormFindsTextAtAnyAddress) {
    PutLanguage(TEXT("French"), "Open the map\tOuvrir\n");
    ASSERT_TRUE(SetLanguage(TEXT("French")));
    for (size_t before = 0; before < 4; ++before) {
        const WideString found = WideString(before, 'x') + TEXT("Open the map");
        EXPECT_EQ(TEXT("Ouvrir"), catalogue.Translate(found.c_str() + before));
        const WideString ornamented = WideString(before, 'x') + TEXT("&Open the map...");
        EXPECT_EQ(TEXT("Ouvrir"), catalogue.Translate(ornamented.c_str() + before));
        const WideString missing = WideString(before, 'x') + TEXT("Open the maps");
        EXPECT_EQ(TEXT("Open the maps"), catalogue.Translate(missing.c_str() + before));
    }
    EXPECT_EQ(Texts{TEXT("Open the maps")}, catalogue.UntranslatedTexts());
}

TEST_F(Catalogue, NullIsAnEmptyText) {
    EXPECT_EQ(TEXT(""), catalogue.Translate(static_cast<const char*>(nullptr)));
    EXPECT_EQ(TEXT(""), catalogue.Translate(static_cast<const WCHAR*>(nullptr)));
}

TEST_F(Catalogue, ResultStaysValidWhileFurtherTextsAreLookedUp) {
    PutLanguage(TEXT("French"), "Open\tOuvrir\n");
    ASSERT_TRUE(SetLanguage(TEXT("French")));
    const WideString& translated = catalogue.Translate(TEXT("Open"));
    const WideString& collected = catalogue.Translate(TEXT("first"));
    for (WCHAR unit = 1; unit < 2000; ++unit)
        catalogue.Translate(WideString(1, unit));
    EXPECT_FALSE(SetLanguage(TEXT("Missing"))) << "a file that does not open leaves results valid";
    EXPECT_EQ(TEXT("Ouvrir"), translated);
    EXPECT_EQ(TEXT("first"), collected);
    EXPECT_EQ(&collected, &catalogue.Translate(TEXT("first")));
}

TEST_F(Catalogue, TranslationMayBeEmpty) {
    PutLanguage(TEXT("French"), "Open\t\"\r\n");
    ASSERT_TRUE(SetLanguage(TEXT("French")));
    EXPECT_EQ(TEXT(""), catalogue.Translate(TEXT("Open")));
    EXPECT_EQ(Texts{}, catalogue.UntranslatedTexts());
}

TEST_F(Catalogue, InitTranslationSelectsTheLanguageOfTheSettings) {
    SetRegistryValue(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Language"), REG_SZ,
                     BytesOf(TEXT("English")));
    EXPECT_TRUE(catalogue.InitTranslation(nullptr));
    EXPECT_EQ(TEXT("English"), catalogue.CurrentLanguage());
}

TEST_F(Catalogue, InitTranslationWithoutTheSettingSelectsNone) {
    EXPECT_FALSE(catalogue.InitTranslation(nullptr));
    EXPECT_EQ(TEXT(""), catalogue.CurrentLanguage());
}
