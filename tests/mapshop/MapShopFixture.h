/* A map shop whose answers are scripted, and an application that searches it through the exports. */
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "LMOnline.h"
#include "support/MapShopReply.h"
#include "support/NetworkTest.h"

class MapShop : public NetworkTest {
protected:
    void Answer(WebReply reply) { device.AddHost(u"online.orvande.example", 80, std::move(reply)); }
    void Answer(const MapShopReply& reply) { Answer(WebReply::WithBody(reply.bytes)); }

    struct Outcome {
        std::vector<MapShopResult> maps;
        int32_t finalValue = 0;
    };

    static Outcome Take(MapShopSearch* search) {
        Outcome outcome;
        MapShopResult map;
        while (LMMapShopGetNext(search, &map) == 1)
            outcome.maps.push_back(map);
        outcome.finalValue = LMMapShopClose(search);
        return outcome;
    }

    static Outcome Search() {
        MapShopSearch* const search = LMMapShopSearch(nullptr, 0);
        EXPECT_NE(nullptr, search);
        return Take(search);
    }

    void ExpectNothingFound() {
        const Outcome outcome = Search();
        EXPECT_EQ(0u, outcome.maps.size());
        EXPECT_EQ(0, outcome.finalValue);
        EXPECT_TRUE(device.MessageBoxes().empty());
    }
};

/* A reply with two maps and the final value 24. */
inline MapShopReply TwoMaps() {
    return MapShopReply()
        .Int32(0)
        .Int32(2)
        .Map(TEXT("Malta"), 1200, TEXT("/maps/malta.map"), TEXT("All of it."))
        .Map(TEXT("\x00CEle-de-France"), -5, TEXT("/p"), TEXT(""))
        .Int32(24);
}
