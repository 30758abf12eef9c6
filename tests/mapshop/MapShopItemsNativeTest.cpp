#include "mapshop/MapShopFixture.h"

TEST_F(MapShop, OneItemIsSentAsItIs) {
    Answer(TwoMaps());
    const std::string item = "0123456789abcdef";
    LMMapShopClose(LMMapShopSearch(item.data(), 1));
    EXPECT_EQ(MapShopReply().Int32(101).Int32(1).bytes + item, device.Requests().back().body);
}
