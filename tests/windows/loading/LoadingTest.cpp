/* Loading and unloading the DLL. */
#include <gtest/gtest.h>

#include <optional>

#include "frame/Folders.h"
#include "helpers/HeapUse.h"
#include "helpers/MovedFolder.h"
#include "helpers/OpenHandles.h"
#include "helpers/ProgramFolder.h"
#include "helpers/ScriptedServer.h"
#include "helpers/ShippedLibrary.h"
#include "helpers/WebProxy.h"
#include "support/DeviceTest.h"
#include "support/MapShopReply.h"

namespace {

bool IsLoaded() {
    return GetModuleHandleW(L"OrvandeOnline.dll") != nullptr;
}

class Loading : public DeviceTest {
protected:
    void SetUp() override {
        DeviceTest::SetUp();
        const std::wstring documents = PathOf(L"Documents");
        MakeFolder(documents);
        movedDocuments.emplace(L"Personal", documents);
        ASSERT_EQ(documents, GetSpecialFolderPath(CSIDL_PERSONAL, {})) << "the harvest would go elsewhere";
        harvestFolder = documents + L"\\ZRTranslation";
        harvest = harvestFolder + L"\\OrvandeOnline.txt";
    }

    void TearDown() override {
        movedDocuments.reset();
        DeviceTest::TearDown();
    }

    std::wstring harvestFolder;
    std::wstring harvest;

private:
    std::optional<MovedFolder> movedDocuments;
};

}  // namespace

TEST_F(Loading, IsUnloadedByItsLastUser) {
    {
        const ShippedLibrary library;
        EXPECT_TRUE(IsLoaded());
    }
    EXPECT_FALSE(IsLoaded());
}

TEST_F(Loading, HasExactlyOneInternetSessionOpenEachTime) {
    { const ShippedLibrary warm; }
    const uintptr_t before = NextInternetHandle();
    const HINTERNET one = InternetOpenW(L"test", INTERNET_OPEN_TYPE_DIRECT, nullptr, nullptr, 0);
    const uintptr_t afterOne = NextInternetHandle();
    InternetCloseHandle(one);
    ASSERT_LT(before, afterOne);
    for (int i = 0; i < 3; ++i) {
        const ShippedLibrary library;
        ASSERT_EQ(afterOne, NextInternetHandle());
    }
    EXPECT_EQ(before, NextInternetHandle());
}

TEST_F(Loading, NothingIsLeftAfter300TimesLoadingAndUnloading) {
    { const ShippedLibrary warm; }
    // What only the stand-in needs, such as the common controls, takes much longer to load than the DLL.
    const LoadedModule standIn(L"aygshell.dll");
    const size_t before = OpenHandles();
    const uintptr_t nextBefore = NextInternetHandle();
    ASSERT_LT(0U, before);
    for (int i = 0; i < 300; ++i) {
        const ShippedLibrary library;
    }
    EXPECT_FALSE(IsLoaded());
    // The system may meanwhile close what it has used before; one handle left by each load would be 300.
    EXPECT_GE(before, OpenHandles());
    EXPECT_EQ(nextBefore, NextInternetHandle());
}

TEST_F(Loading, NothingIsLeftOnTheHeap) {
    { const ShippedLibrary warm; }
    const LoadedModule standIn(L"aygshell.dll");
    { const ShippedLibrary warm; }
    const size_t before = HeapUse();
    for (int i = 0; i < 20; ++i) {
        const ShippedLibrary library;
    }
    EXPECT_EQ(before, HeapUse());
}

TEST_F(Loading, LittleIsOnTheHeapWhileNothingIsAsked) {
    const LoadedModule standIn(L"aygshell.dll");
    { const ShippedLibrary warm; }
    const size_t before = HeapUse();
    const ShippedLibrary library;
    EXPECT_GE(before + 4096, HeapUse());
}

TEST_F(Loading, NothingIsLeftAfter300SearchesGoodAndBad) {
    ScriptedServer server;
    const WebProxy proxy(server.Port());
    const ShippedLibrary library;
    const auto searchBoth = [&] {
        server.Answer(MapShopReply().Int32(0).Int32(1).Map(L"a", 1, L"b", L"c").Int32(7).bytes);
        EXPECT_EQ(1U, library.Search().results.size());
        server.Answer(ConnectionScript{"", ConnectionScript::Ending::Reset, false});
        EXPECT_EQ(0U, library.Search().results.size());
    };
    searchBoth();
    const uintptr_t nextBefore = NextInternetHandle();
    const size_t before = OpenHandles();
    for (int i = 0; i < 150; ++i)
        searchBoth();
    // The system may open some of its own; one handle left by each search would be 150 at least.
    EXPECT_LT(OpenHandles(), before + 50);
    EXPECT_EQ(nextBefore, NextInternetHandle());
}

TEST_F(Loading, TitleIsHarvestedAtUnloadWhenThereIsAFolderForIt) {
    MakeFolder(harvestFolder);
    {
        const ShippedLibrary library;
        EXPECT_EQ(std::nullopt, TakeFile(harvest));
    }
    EXPECT_EQ("\xFF\xFE" + BytesOf(L"Orvande Online\tXXXX\r\n"), TakeFile(harvest).value_or("no file"));
}

TEST_F(Loading, FolderOfTheHarvestIsNotMade) {
    { const ShippedLibrary library; }
    EXPECT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesW(harvestFolder.c_str()));
}

TEST_F(Loading, LanguageFileBesideTheDllIsLoaded) {
    SetRegistryValue(HKEY_CURRENT_USER, L"Software\\Orvande", L"Language", REG_SZ,
                     BytesOf(std::wstring(L"Tests\0", 6)));
    const std::wstring language = ProgramFolder() + L"\\OrvandeOnline.Tests.txt";
    PutFile(language, "one\teins\n");
    MakeFolder(harvestFolder);
    { const ShippedLibrary library; }
    DeleteFileW(language.c_str());
    // A language that has a file ends the harvest of what was looked up before it.
    EXPECT_EQ(std::nullopt, TakeFile(harvest));
}
