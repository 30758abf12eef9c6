/* The library as an application sees it: loaded from its file, used through its exports, unloaded. */
#include <gtest/gtest.h>

#include <string>

#include "Device.h"
#include "LMOnline.h"
#include "support/DeviceTest.h"
#include "support/MapShopReply.h"

namespace {

class LoadedFromFile : public DeviceTest {
protected:
    LoadedLibrary Load() { return device.LoadLibraryFile(ORVANDE_LIBRARY_FILE); }

    Device& device = Device::Current();
};

}  // namespace

TEST_F(LoadedFromFile, LoadingAndUnloadingOpensAndClosesExactlyOneSession) {
    Load().Unload();
    const std::vector<std::string> expected = {
        R"(InternetOpenW("Orvande-SP", 0, null, null, 0x00000000) = session 1)",
        "InternetCloseHandle(session 1) = TRUE",
    };
    EXPECT_EQ(expected, device.Calls({"InternetOpenW", "InternetCloseHandle", "InternetConnectW"}));
}

TEST_F(LoadedFromFile, ObjectsAreMadeBeforeAttachAndUnmadeInReverse) {
    SetRegistryValue(HKEY_CURRENT_USER, TEXT("Software\\Orvande"), TEXT("Language"), REG_SZ,
                     BytesOf(TEXT("Dutch")));
    Load().Unload();
    const std::vector<std::string> expected = {
        R"(InternetOpenW("Orvande-SP", 0, null, null, 0x00000000) = session 1)",
        "SHInitExtraControls(library, 1, null) = TRUE",
        R"(RegOpenKeyExW(HKEY_CURRENT_USER, "Software\Orvande", 0, 0x00020019) = 0, key 1)",
        R"(_wfopen("\Program Files\App\OrvandeOnline.Dutch.txt", "rb") = null)",
        "InternetCloseHandle(session 1) = TRUE",
        R"(SHGetSpecialFolderPathW(null, 5, TRUE) = TRUE, "\My Documents")",
    };
    EXPECT_EQ(expected, device.Calls({"InternetOpenW", "SHInitExtraControls", "RegOpenKeyExW", "_wfopen",
                                      "InternetCloseHandle", "SHGetSpecialFolderPathW"}));
}

TEST_F(LoadedFromFile, HarvestIsWrittenAtUnload) {
    device.MakeFolder(u"\\My Documents\\ZRTranslation");
    LoadedLibrary library = Load();
    EXPECT_FALSE(device.Exists(u"\\My Documents\\ZRTranslation\\OrvandeOnline.txt"));
    library.Unload();
    EXPECT_EQ("\xFF\xFE" + BytesOf(TEXT("Orvande Online\tXXXX\r\n")),
              device.TakeFile(u"\\My Documents\\ZRTranslation\\OrvandeOnline.txt").value_or("no file"));
}

TEST_F(LoadedFromFile, SearchGoesThroughTheExports) {
    device.AddHost(u"online.orvande.example", 80,
                   WebReply::WithBody(MapShopReply()
                                          .Int32(0)
                                          .Int32(1)
                                          .Map(TEXT("Malta"), 1200, TEXT("/maps/malta.map"), TEXT("All."))
                                          .Int32(24)
                                          .bytes));
    const LoadedLibrary library = Load();
    auto* const search = library.Find<decltype(LMMapShopSearch)>("LMMapShopSearch");
    auto* const getNext = library.Find<decltype(LMMapShopGetNext)>("LMMapShopGetNext");
    auto* const close = library.Find<decltype(LMMapShopClose)>("LMMapShopClose");
    ASSERT_TRUE(search != nullptr && getNext != nullptr && close != nullptr);

    MapShopSearch* const handle = search(nullptr, 0);
    MapShopResult map;
    EXPECT_EQ(1, getNext(handle, &map));
    EXPECT_EQ(TEXT("Malta"), WideString(map.text1));
    EXPECT_EQ(0, getNext(handle, &map));
    EXPECT_EQ(24, close(handle));
}

TEST_F(LoadedFromFile, LoadsAndUnloadsThousandsOfTimes) {
    for (int i = 0; i < 2000; ++i)
        Load().Unload();
    EXPECT_EQ(2000u, device.CountCalls("InternetOpenW"));
    EXPECT_EQ(2000u, device.CountCalls("InternetCloseHandle"));
}

TEST_F(LoadedFromFile, LoadsThoughTheSessionCannotBeOpened) {
    device.FailCall("InternetOpenW", 1, ERROR_NOT_ENOUGH_MEMORY);
    LoadedLibrary library = Load();
    EXPECT_TRUE(library.IsLoaded());
    library.Unload();
    EXPECT_EQ(0u, device.CountCalls("InternetCloseHandle"));
}
