/* The catalogue on the simulated handheld: where it finds its module and the user's documents. */
#include <gtest/gtest.h>

#include "Device.h"
#include "base/OwnedFile.h"
#include "support/DeviceTest.h"
#include "ui/TranslationCatalogue.h"

namespace {

class CatalogueOnDevice : public DeviceTest {
protected:
    static void SetLanguageSetting(WideStringView name) {
        SetRegistryValue(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Language"), REG_SZ,
                         BytesOf(name));
    }

    Device& device = Device::Current();
};

}  // namespace

TEST_F(CatalogueOnDevice, LanguageFileIsFoundBesideTheLibrary) {
    SetLanguageSetting(TEXT("French"));
    device.PutFile(u"\\Program Files\\App\\OrvandeOnline.French.txt", "Open\tOuvrir\n");
    TranslationCatalogue catalogue;
    EXPECT_TRUE(catalogue.InitTranslation(device.LibraryInstance()));
    EXPECT_EQ(TEXT("Ouvrir"), catalogue.Translate("Open"));
}

TEST_F(CatalogueOnDevice, WithoutASettingNoFileIsLookedFor) {
    TranslationCatalogue catalogue;
    EXPECT_FALSE(catalogue.InitTranslation(device.LibraryInstance()));
    EXPECT_EQ(0u, device.CountCalls("_wfopen"));
}

TEST_F(CatalogueOnDevice, LibraryInTheRootFolderHasItsFilesThere) {
    device.SetLibraryPath(u"\\Lib.dll");
    SetLanguageSetting(TEXT("French"));
    device.PutFile(u"\\Lib.French.txt", "Open\tOuvrir\n");
    TranslationCatalogue catalogue;
    EXPECT_TRUE(catalogue.InitTranslation(device.LibraryInstance()));
}

TEST_F(CatalogueOnDevice, UnknownModuleFileMeansThatNoLanguageIsFound) {
    SetLanguageSetting(TEXT("French"));
    device.PutFile(u"\\Program Files\\App\\OrvandeOnline.French.txt", "Open\tOuvrir\n");
    device.FailCall("GetModuleFileNameW", 1, ERROR_INVALID_HANDLE);
    TranslationCatalogue catalogue;
    EXPECT_FALSE(catalogue.InitTranslation(device.LibraryInstance()));
    EXPECT_EQ((std::vector<std::string>{R"(_wfopen("", "rb") = null)"}), device.Calls({"_wfopen"}));
}

TEST_F(CatalogueOnDevice, ModulePathThatFillsTheBufferCountsAsUnknown) {
    SetLanguageSetting(TEXT("French"));
    device.PutFile(u"\\Lib.French.txt", "Open\tOuvrir\n");
    const struct {
        size_t length;
        bool isKnown;
    } cases[] = {{259, true}, {260, false}, {261, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.length);
        const std::u16string start = u"\\Lib.";
        device.SetLibraryPath(start + std::u16string(c.length - start.size(), u'x'));
        device.ForgetCalls();
        TranslationCatalogue catalogue;
        EXPECT_EQ(c.isKnown, catalogue.InitTranslation(device.LibraryInstance()));
        EXPECT_EQ((std::vector<std::string>{c.isKnown ? R"(_wfopen("\Lib.French.txt", "rb") = file 1)"
                                                      : R"(_wfopen("", "rb") = null)"}),
                  device.Calls({"_wfopen"}));
    }
}

TEST_F(CatalogueOnDevice, ModuleIsAskedForItsPathOnlyForAnotherLanguage) {
    SetLanguageSetting(TEXT("French"));
    device.PutFile(u"\\Program Files\\App\\OrvandeOnline.French.txt", "Open\tOuvrir\n");
    TranslationCatalogue catalogue;
    EXPECT_FALSE(catalogue.SetLanguage({}));
    EXPECT_EQ(0u, device.CountCalls("GetModuleFileNameW"));
    ASSERT_TRUE(catalogue.InitTranslation(device.LibraryInstance()));
    EXPECT_EQ(1u, device.CountCalls("GetModuleFileNameW"));
    EXPECT_FALSE(catalogue.SetLanguage(TEXT("French")));
    EXPECT_EQ(1u, device.CountCalls("GetModuleFileNameW"));
}

TEST_F(CatalogueOnDevice, HarvestIsWrittenToTheUsersDocumentsAtTheEnd) {
    device.MakeFolder(u"\\My Documents\\ZRTranslation");
    {
        TranslationCatalogue catalogue;
        catalogue.InitTranslation(device.LibraryInstance());
        catalogue.Translate("Open");
    }
    EXPECT_EQ("\xFF\xFE" + BytesOf(TEXT("Open\tXXXX\r\n")),
              device.TakeFile(u"\\My Documents\\ZRTranslation\\OrvandeOnline.txt").value_or("no file"));
    const std::vector<std::string> expected = {
        R"(SHGetSpecialFolderPathW(null, 5, TRUE) = TRUE, "\My Documents")"};
    EXPECT_EQ(expected, device.Calls({"SHGetSpecialFolderPathW"}));
}

TEST_F(CatalogueOnDevice, ModuleIsAskedForItsPathOnlyForAHarvestThatIsWritten) {
    device.PutFile(u"\\Temp\\French.txt", "Open\tOuvrir\n");
    TranslationCatalogue catalogue;
    ASSERT_TRUE(catalogue.LoadTranslationFile(TEXT("\\Temp\\French.txt")));
    catalogue.WriteUntranslatedFile();
    EXPECT_EQ(TEXT("Open"), catalogue.Translate("Open")) << "the table is emptied without a text, too";
    catalogue.WriteUntranslatedFile();
    EXPECT_TRUE(catalogue.UntranslatedTexts().empty()) << "and the texts without a folder";
    EXPECT_EQ(0u, device.CountCalls("GetModuleFileNameW"));

    device.MakeFolder(u"\\My Documents\\ZRTranslation");
    catalogue.Translate("Open");
    device.ForgetCalls();
    catalogue.WriteUntranslatedFile();
    const std::vector<std::string> expected = {
        R"(SHGetSpecialFolderPathW(null, 5, TRUE) = TRUE, "\My Documents")",
        R"(GetFileAttributesW("\My Documents\ZRTranslation") = 0x00000010)",
        R"(GetModuleFileNameW(null, 260) = 30, "\Program Files\App\Program.exe")",
        R"(_wfopen("\My Documents\ZRTranslation\Program.txt", "wb") = file 2)", "fclose(file 2) = 0"};
    EXPECT_EQ(expected, device.Calls());
    EXPECT_TRUE(catalogue.UntranslatedTexts().empty());
}

TEST_F(CatalogueOnDevice, WithoutADocumentsFolderTheHarvestFolderIsLookedForInTheRoot) {
    device.SetSpecialFolder(CSIDL_PERSONAL, std::nullopt);
    device.MakeFolder(u"\\ZRTranslation");
    {
        TranslationCatalogue catalogue;
        catalogue.InitTranslation(device.LibraryInstance());
        catalogue.Translate("Open");
    }
    EXPECT_TRUE(device.Exists(u"\\ZRTranslation\\OrvandeOnline.txt"));
}

TEST_F(CatalogueOnDevice, HarvestOfAnUnknownModuleIsNamedModule) {
    device.MakeFolder(u"\\My Documents\\ZRTranslation");
    {
        TranslationCatalogue catalogue;
        catalogue.InitTranslation(device.LibraryInstance());
        catalogue.Translate("Open");
        device.FailCall("GetModuleFileNameW", 1, ERROR_INVALID_HANDLE);
    }
    EXPECT_TRUE(device.Exists(u"\\My Documents\\ZRTranslation\\module.txt"));
}

TEST_F(CatalogueOnDevice, HarvestWhoseFileCannotBeOpenedIsKeptForTheNextTime) {
    device.MakeFolder(u"\\My Documents\\ZRTranslation");
    TranslationCatalogue catalogue;
    catalogue.Translate("Open");
    device.FailCall("_wfopen", 1, ERROR_ACCESS_DENIED);
    catalogue.WriteUntranslatedFile();
    EXPECT_EQ((std::set<WideString>{TEXT("Open")}), catalogue.UntranslatedTexts());
    catalogue.WriteUntranslatedFile();
    EXPECT_TRUE(catalogue.UntranslatedTexts().empty());
    EXPECT_TRUE(device.Exists(u"\\My Documents\\ZRTranslation\\Program.txt"));
}

TEST_F(CatalogueOnDevice, FullStorageCutsTheHarvestWithoutHarm) {
    device.MakeFolder(u"\\My Documents\\ZRTranslation");
    {
        TranslationCatalogue catalogue;
        catalogue.InitTranslation(device.LibraryInstance());
        catalogue.Translate("Open");
        device.SetFreeStorage(6);
    }
    EXPECT_EQ(std::string("\xFF\xFEO\0p\0", 6),
              device.TakeFile(u"\\My Documents\\ZRTranslation\\OrvandeOnline.txt").value_or("no file"));
}

TEST_F(CatalogueOnDevice, ReadThatFailsEndsTheFile) {
    SetLanguageSetting(TEXT("French"));
    device.PutFile(u"\\Program Files\\App\\OrvandeOnline.French.txt", "Open\tOuvrir\n");
    device.FailCall("fread", 1, ERROR_READ_FAULT, Failing::FromThereOn);
    TranslationCatalogue catalogue;
    EXPECT_FALSE(catalogue.InitTranslation(device.LibraryInstance()));
    EXPECT_EQ(TEXT(""), catalogue.CurrentLanguage());
}

TEST_F(CatalogueOnDevice, ReadThatFailsOnceLosesNothingThatCanStillBeRead) {
    SetLanguageSetting(TEXT("French"));
    device.PutFile(u"\\Program Files\\App\\OrvandeOnline.French.txt", "Open\tOuvrir\nClose\tFermer\n");
    device.FailCall("fread", 9, ERROR_READ_FAULT);
    TranslationCatalogue catalogue;
    EXPECT_TRUE(catalogue.InitTranslation(device.LibraryInstance()));
    EXPECT_EQ(TEXT("Ouvrir"), catalogue.Translate("Open"));
    EXPECT_EQ(TEXT("Fermer"), catalogue.Translate("Close"));
}

TEST_F(CatalogueOnDevice, FolderThatOpensAsAFileHasNoRecords) {
    const FileHandle folder(fopen("/", "r"));
    ASSERT_TRUE(folder);
    TranslationTable table;
    ReadTranslations(folder.Get(), table);
    EXPECT_TRUE(table.empty());
}

TEST_F(CatalogueOnDevice, TextIsCopiedOnlyWhereItDoesNotLieAsWordsDo) {
    const WideString path = DeviceTest::PathOf(TEXT("Language.txt"));
    PutFile(path, "Open the map\tOuvrir\n");
    TranslationCatalogue catalogue;
    ASSERT_TRUE(catalogue.LoadTranslationFile(path));
    for (size_t before = 0; before < unitsPerWord; ++before) {
        const WideString text = WideString(before, TEXT('x')) + TEXT("Open the map");
        AllocationWatch watch;
        const WideString& translated = catalogue.Translate(text.c_str() + before);
        watch.Stop();
        EXPECT_EQ(TEXT("Ouvrir"), translated);
        EXPECT_EQ(before == 0 ? 0u : 1u, watch.Count()) << before;
    }
}

TEST_F(CatalogueOnDevice, TextWithoutOrnamentsIsNotCopiedToLeaveThemOut) {
    TranslationCatalogue catalogue;
    const WideString text = TEXT("Open the map");
    catalogue.Translate(text);
    AllocationWatch watch;
    catalogue.Translate(text);
    watch.Stop();
    EXPECT_EQ(0u, watch.Count());
}

TEST_F(CatalogueOnDevice, ReadOnlyFileInPlaceOfTheHarvestFolderIsNoFolder) {
    device.PutFile(u"\\My Documents\\ZRTranslation", "");
    device.SetReadOnly(u"\\My Documents\\ZRTranslation", true);
    {
        TranslationCatalogue catalogue;
        catalogue.Translate("Open");
    }
    EXPECT_EQ(0u, device.CountCalls("_wfopen"));
}
