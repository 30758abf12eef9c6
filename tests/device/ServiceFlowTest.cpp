/* The device's image and the running reference service, over real HTTP. */
#include "support/NetworkTest.h"

#include "LMOnline.h"
#include "RunningService.h"
#include "network/NetworkWeb.h"

namespace {

constexpr WCHAR map[] = TEXT("/maps/reunion.map");
constexpr size_t mapSize = 1105500;

class ServiceFlow : public NetworkTest {
protected:
    void SetUp() override {
        NetworkTest::SetUp();
        device.AddHost(serviceHost, 80, HostOnLoopback(PortOfService()));
    }

    std::string Range(int64_t offset, int32_t length) {
        std::string bytes(static_cast<size_t>(length), '.');
        EXPECT_EQ(length, xfa704a3f(serviceHost, map, offset, length, bytes.data(), nullptr, nullptr));
        return bytes;
    }
};

}  // namespace

TEST_F(ServiceFlow, SearchFindsTheMapsOfTheCatalogueInABox) {
    const int32_t reunion[] = {-2140000, 5520000, -2085000, 5585000};
    MapShopSearch* const search = LMMapShopSearch(reunion, 1);
    MapShopResult result;
    bool found = false;
    while (LMMapShopGetNext(search, &result) == 1)
        found = found || WideString(result.text2) == map;
    EXPECT_TRUE(found);
    EXPECT_LT(1, LMMapShopClose(search));
}

TEST_F(ServiceFlow, DownloadBringsTheWholeFileAndRangesItsParts) {
    const WideString target = PathOf(TEXT("reunion.map"));
    DownloadProgress progress{-7, -7};
    ASSERT_EQ(1, LMDownloadWebFileProgress(serviceHost, map, target.c_str(), nullptr, nullptr, &progress));
    EXPECT_EQ(static_cast<int64_t>(mapSize), progress.bytesReceived);
    EXPECT_EQ(static_cast<int64_t>(mapSize), progress.totalBytes);
    const std::string file = TakeFile(target).value_or("no file");
    ASSERT_EQ(mapSize, file.size());
    EXPECT_EQ("Orvande map reunion.map, 1105500 bytes\n", file.substr(0, 39));
    EXPECT_EQ("\x2C\xC9\xAE\xF2\xA0\x77\x01\xF9", file.substr(1000, 8)) << "the example of the document";
    for (const auto& [offset, length] : {std::pair(0, 1), {1000, 8}, {4095, 4098}, {1105400, 100}})
        EXPECT_EQ(file.substr(static_cast<size_t>(offset), static_cast<size_t>(length)),
                  Range(offset, length));
}

TEST_F(ServiceFlow, MapThatTheServiceDoesNotHaveIsRefused) {
    const WideString target = PathOf(TEXT("none.map"));
    EXPECT_EQ(0, x77fc64c7(serviceHost, TEXT("/maps/no-such.map"), target.c_str(), nullptr, nullptr));
    EXPECT_FALSE(device.Exists(target));
}
