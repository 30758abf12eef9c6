/* What the catalogue writes for translators, and when. */
#include "ui/CatalogueFixture.h"

using namespace std::string_literals;

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

TEST_F(Harvest, WithoutATextStillEmptiesTheTable) {
    MakeHarvestFolder();
    PutLanguage(TEXT("French"), "Open\tOuvrir\n");
    ASSERT_TRUE(SetLanguage(TEXT("French")));
    WriteHarvest();
    EXPECT_FALSE(TakeFile(Folder() + TEXT("\\Lib.txt")).has_value());
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
