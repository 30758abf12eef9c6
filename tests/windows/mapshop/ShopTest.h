/* A test of the DLL against a scripted web server, which WinINet reaches as the user's proxy. */
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "helpers/ScriptedServer.h"
#include "helpers/ShippedLibrary.h"
#include "helpers/WebProxy.h"
#include "support/MapShopReply.h"

class ShopTest : public ::testing::Test {
protected:
    /* Makes the service's replies have `body`. */
    void Reply(const MapShopReply& body) { server.Answer(body.bytes); }

    /* Expects a search that has a handle, but neither results nor a final value. */
    static void ExpectNothing(const SearchOutcome& outcome) {
        EXPECT_TRUE(outcome.gotHandle);
        EXPECT_EQ(0U, outcome.results.size());
        EXPECT_EQ(0, outcome.finalValue);
    }

    ScriptedServer server;
    WebProxy proxy{server.Port()};
    ShippedLibrary library;
};
