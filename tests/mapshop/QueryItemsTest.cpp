#include <gtest/gtest.h>

#include "mapshop/MapShopSearch.h"

TEST(QueryItems, MayBeAsManyAsHaveTheirBytesCountedIn32Bits) {
    const char items[16] = {};
    EXPECT_TRUE(MapShopSearch::AreItems(items, 1));
    EXPECT_TRUE(MapShopSearch::AreItems(items, 0x0FFFFFFF));
    EXPECT_FALSE(MapShopSearch::AreItems(items, 0x10000000));
    EXPECT_FALSE(MapShopSearch::AreItems(items, INT32_MAX));
}

TEST(QueryItems, NoneNeedNoPlace) {
    EXPECT_TRUE(MapShopSearch::AreItems(nullptr, 0));
    EXPECT_FALSE(MapShopSearch::AreItems(nullptr, 1));
    EXPECT_FALSE(MapShopSearch::AreItems("", -1));
}
