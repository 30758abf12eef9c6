#include "ui/TranslationCatalogue.h"

#include <gtest/gtest.h>

#include "support/DeviceTest.h"

using namespace std::string_literals;

namespace {

class Catalogue : public DeviceTest {
protected:
    void SetUp() override {
        DeviceTest::SetUp();
        modulePath = PathOf(TEXT("Lib.dll"));
    }

    void TearDown() override {
        // What a catalogue of these tests has not found is not to be harvested for real.
        catalogue.WriteUntranslatedFile({}, PathOf(TEXT("nowhere")));
        DeviceTest::TearDown();
    }

    static void PutLanguage(const WideString& name, std::string_view records) {
        PutFile(PathOf(TEXT("Lib.") + name + TEXT(".txt")), records);
    }

    bool SetLanguage(const WideString& name) { return catalogue.SetLanguage(name, modulePath); }

    WideString modulePath;
    TranslationCatalogue catalogue;
};

using Texts = std::set<WideString>;

}  // namespace

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

namespace {

class Harvest : public Catalogue {
protected:
    static WideString Personal() { return PathOf(TEXT("Documents")); }
    static WideString Folder() { return Personal() + TEXT("\\ZRTranslation"); }

    static void MakeHarvestFolder() {
        MakeFolder(Personal());
        MakeFolder(Folder());
    }

    void WriteHarvest() { catalogue.WriteUntranslatedFile(modulePath, Personal()); }
};

}  // namespace

TEST_F(Harvest, IsWrittenIntoTheFolderUnderTheNameOfTheModule) {
    MakeHarvestFolder();
    catalogue.Translate(TEXT("&Open..."));
    WriteHarvest();
    EXPECT_EQ("\xFF\xFE" + BytesOf(TEXT("&Open...\tXXXX\r\n")),
              TakeFile(Folder() + TEXT("\\Lib.txt")).value_or("no file"));
}

TEST_F(Harvest, EmptiesSetAndTable) {
    MakeHarvestFolder();
    PutLanguage(TEXT("French"), "Open\tOuvrir\n");
    ASSERT_TRUE(SetLanguage(TEXT("French")));
    catalogue.Translate(TEXT("unknown"));
    WriteHarvest();
    EXPECT_EQ(Texts{}, catalogue.UntranslatedTexts());
    EXPECT_EQ(TEXT("Open"), catalogue.Translate(TEXT("Open")));
}

TEST_F(Harvest, ReplacesAnEarlierFile) {
    MakeHarvestFolder();
    PutFile(Folder() + TEXT("\\Lib.txt"), std::string(1000, 'x'));
    catalogue.Translate(TEXT("a"));
    WriteHarvest();
    EXPECT_EQ("\xFF\xFE" + BytesOf(TEXT("a\tXXXX\r\n")),
              TakeFile(Folder() + TEXT("\\Lib.txt")).value_or("no file"));
}

TEST_F(Harvest, IsItselfALanguageFile) {
    MakeHarvestFolder();
    catalogue.Translate(TEXT("tab\there"));
    WriteHarvest();
    EXPECT_TRUE(catalogue.LoadTranslationFile(Folder() + TEXT("\\Lib.txt")));
    EXPECT_EQ(TEXT("XXXX"), catalogue.Translate(TEXT("tab\there")));
}

TEST_F(Harvest, NothingIsWrittenWithoutAText) {
    MakeHarvestFolder();
    WriteHarvest();
    EXPECT_FALSE(TakeFile(Folder() + TEXT("\\Lib.txt")).has_value());
}

TEST_F(Harvest, NothingIsWrittenWithoutTheFolderWhichIsNotMade) {
    MakeFolder(Personal());
    catalogue.Translate(TEXT("a"));
    WriteHarvest();
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesW(Folder().c_str()));
    EXPECT_EQ(Texts{}, catalogue.UntranslatedTexts()) << "the catalogue is emptied all the same";
}

TEST_F(Harvest, NothingIsWrittenWhenAFileHasTheFoldersName) {
    MakeFolder(Personal());
    PutFile(Folder(), "a file");
    catalogue.Translate(TEXT("a"));
    WriteHarvest();
    EXPECT_EQ("a file", TakeFile(Folder()).value_or("no file"));
    EXPECT_EQ(Texts{}, catalogue.UntranslatedTexts());
}

TEST_F(Harvest, FileThatCannotBeOpenedLeavesTheCatalogueAsItIs) {
    MakeHarvestFolder();
    MakeFolder(Folder() + TEXT("\\Lib.txt"));
    catalogue.Translate(TEXT("a"));
    WriteHarvest();
    EXPECT_EQ(Texts{TEXT("a")}, catalogue.UntranslatedTexts());
}

TEST_F(Harvest, OfAnUnknownModuleIsNamedModule) {
    MakeHarvestFolder();
    catalogue.Translate(TEXT("a"));
    catalogue.WriteUntranslatedFile({}, Personal());
    EXPECT_TRUE(TakeFile(Folder() + TEXT("\\module.txt")).has_value());
}
