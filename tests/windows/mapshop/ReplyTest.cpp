/* Replies of every kind, good and hostile, through the DLL's exports. */
#include "mapshop/ShopTest.h"

using namespace std::string_literals;

namespace {

/* What an entry of a map should have become. */
struct ExpectedMap {
    std::wstring text1;
    int32_t number;
    std::wstring text2;
    std::wstring text3;
};

class ShopReply : public ShopTest {
protected:
    static void Expect(const ExpectedMap& expected, const MapShopResult& result) {
        EXPECT_EQ(expected.text1, result.text1);
        EXPECT_EQ(expected.number, result.number);
        EXPECT_EQ(expected.text2, result.text2);
        EXPECT_EQ(expected.text3, result.text3);
    }

    static void Expect(const std::vector<ExpectedMap>& maps, int32_t finalValue,
                       const SearchOutcome& outcome) {
        EXPECT_TRUE(outcome.gotHandle);
        EXPECT_EQ(finalValue, outcome.finalValue);
        ASSERT_EQ(maps.size(), outcome.results.size());
        for (size_t i = 0; i < maps.size(); ++i)
            Expect(maps[i], outcome.results[i]);
    }

    static MapShopReply& Add(MapShopReply& reply, const ExpectedMap& map) {
        return reply.Map(map.text1, map.number, map.text2, map.text3);
    }

    const ExpectedMap alps{L"Alps", 4711, L"/maps/alps.map", L"Mountains"};
    const ExpectedMap crete{L"\u039A\u03C1\u03AE\u03C4\u03B7", -5, L"/maps/crete.map", L""};
};

}  // namespace

TEST_F(ShopReply, EntriesComeInTheOrderOfTheReply) {
    MapShopReply reply;
    reply.Int32(0).Int32(2);
    Add(Add(reply, alps), crete).Int32(38);
    Reply(reply);
    Expect({alps, crete}, 38, library.Search());
}

TEST_F(ShopReply, NoEntriesAndAFinalValue) {
    Reply(MapShopReply().Int32(0).Int32(0).Int32(7));
    Expect({}, 7, library.Search());
}

TEST_F(ShopReply, NegativeCountsHaveNoEntries) {
    for (const int32_t count : {-1, INT32_MIN}) {
        SCOPED_TRACE(count);
        Reply(MapShopReply().Int32(0).Int32(count).Int32(7));
        Expect({}, 7, library.Search());
    }
}

TEST_F(ShopReply, GreatestCountEndsWithTheReply) {
    MapShopReply reply;
    reply.Int32(0).Int32(INT32_MAX);
    Reply(Add(Add(reply, alps), crete));
    Expect({alps, crete}, 0, library.Search());
}

TEST_F(ShopReply, GreatestCountWithoutAnyEntryEndsWithTheReply) {
    Reply(MapShopReply().Int32(0).Int32(INT32_MAX));
    Expect({}, 0, library.Search());
}

TEST_F(ShopReply, EntriesOfOtherTypesAreTheirTypeAlone) {
    MapShopReply reply;
    reply.Int32(0).Int32(6);
    Add(reply, alps).Int32(3).Int32(0).Int32(-1).Int32(5);
    Reply(Add(reply, crete).Int32(9));
    Expect({alps, crete}, 9, library.Search());
}

TEST_F(ShopReply, StatusOtherThan0HasNeitherResultsNorAFinalValue) {
    for (const int32_t status : {1, -1, 4, INT32_MIN, INT32_MAX}) {
        SCOPED_TRACE(status);
        MapShopReply reply;
        reply.Int32(status).Int32(1);
        Reply(Add(reply, alps).Int32(38));
        Expect({}, 0, library.Search());
    }
}

TEST_F(ShopReply, TextsAreCutToTheirCapacity) {
    const std::wstring text(1500, L'x');
    MapShopReply reply;
    Reply(reply.Int32(0).Int32(1).Map(text, 1, text, text).Int32(1));
    Expect({{text.substr(0, 199), 1, text.substr(0, 99), text.substr(0, 999)}}, 1, library.Search());
}

TEST_F(ShopReply, TextOf100000UnitsIsTakenAndCut) {
    const std::wstring text(100000, L'\u00E9');
    MapShopReply reply;
    Reply(reply.Int32(0).Int32(1).Map(text, 1, text, text).Int32(1));
    Expect({{text.substr(0, 199), 1, text.substr(0, 99), text.substr(0, 999)}}, 1, library.Search());
}

TEST_F(ShopReply, TextOf100001UnitsIsRefusedAndItsUnitsAreReadAsWhatFollows) {
    // The length is refused; the number, text2, text3 and the final value come from the bytes after it.
    MapShopReply reply;
    reply.Int32(0).Int32(1).Int32(4).Int32(100001);
    reply.Int32(77).Text(L"path").Text(L"text").Int32(6);
    Reply(reply);
    Expect({{L"", 77, L"path", L"text"}}, 6, library.Search());
}

TEST_F(ShopReply, TextOfNegativeLengthIsRefusedLikeOneThatIsTooLong) {
    MapShopReply reply;
    reply.Int32(0).Int32(1).Int32(4).Text(L"name").Int32(77).Int32(-1).Text(L"text").Int32(6);
    Reply(reply);
    Expect({{L"name", 77, L"", L"text"}}, 6, library.Search());
}

TEST_F(ShopReply, ReplyOf10MegabytesIsReadToItsEnd) {
    const std::wstring text(100000, L'x');
    MapShopReply reply;
    reply.Int32(0).Int32(18);
    for (int i = 0; i < 18; ++i)
        reply.Map(text, i, text, text);
    ASSERT_LT(10U << 20, reply.Int32(5).bytes.size());
    Reply(reply);
    const SearchOutcome outcome = library.Search();
    ASSERT_EQ(18U, outcome.results.size());
    EXPECT_EQ(17, outcome.results[17].number);
    EXPECT_EQ(text.substr(0, 999), outcome.results[17].text3);
    EXPECT_EQ(5, outcome.finalValue);
}

TEST_F(ShopReply, TenMegabytesAfterTheFinalValueAreLeftAlone) {
    Reply(MapShopReply().Int32(0).Int32(0).Int32(7).Units(std::wstring(5U << 20, L'x')));
    Expect({}, 7, library.Search());
}

TEST_F(ShopReply, TenMegabytesAfterABadStatusAreLeftAlone) {
    Reply(MapShopReply().Int32(1).Units(std::wstring(5U << 20, L'x')));
    Expect({}, 0, library.Search());
}

namespace {

/* A reply of two entries that is cut at every one of its bytes. */
class CutReply : public ShopReply {
protected:
    CutReply() {
        MapShopReply reply;
        reply.Int32(0).Int32(2);
        firstEnd = Add(reply, alps).bytes.size();
        secondEnd = Add(reply, crete).bytes.size();
        whole = reply.Int32(0x04030201).bytes;
    }

    /* A read that finds at least one byte succeeds. So an entry is there when no byte is missing, or only the
     * last (the high byte of its last unit or length, which is 0 here), and the final value has the bytes
     * that came. */
    void ExpectCutAt(size_t size, const SearchOutcome& outcome) const {
        std::vector<ExpectedMap> maps;
        if (size + 1 >= firstEnd) maps.push_back(alps);
        // The last field of the second entry is the length of an empty text: one byte of it suffices.
        if (size + 3 >= secondEnd) maps.push_back(crete);
        int32_t finalValue = 0;
        for (size_t i = secondEnd; i < size; ++i) {
            finalValue |= static_cast<int32_t>(i - secondEnd + 1) << (8 * (i - secondEnd));
        }
        Expect(maps, finalValue, outcome);
    }

    size_t firstEnd = 0;
    size_t secondEnd = 0;
    std::string whole;
};

}  // namespace

TEST_F(CutReply, AtEveryByteUnderTheLengthOfTheWhole) {
    const std::string good = HttpReply(whole);
    for (size_t size = 0; size <= whole.size(); ++size) {
        SCOPED_TRACE(size);
        server.Answer(ConnectionScript{good.substr(0, good.size() - whole.size() + size)});
        ExpectCutAt(size, library.Search());
    }
}

TEST_F(CutReply, AtEveryByteWithoutALength) {
    for (size_t size = 0; size <= whole.size(); ++size) {
        SCOPED_TRACE(size);
        server.Answer(ConnectionScript{"HTTP/1.0 200 OK\r\n\r\n" + whole.substr(0, size)});
        ExpectCutAt(size, library.Search());
    }
}

TEST_F(CutReply, AtEveryByteUnderItsOwnLength) {
    for (size_t size = 0; size <= whole.size(); ++size) {
        SCOPED_TRACE(size);
        server.Answer(whole.substr(0, size));
        ExpectCutAt(size, library.Search());
    }
}

TEST_F(CutReply, AtEveryByteOfTheHead) {
    const std::string good = HttpReply(whole);
    for (size_t size = 0; size < good.size() - whole.size(); ++size) {
        SCOPED_TRACE(size);
        server.Answer(ConnectionScript{good.substr(0, size)});
        Expect({}, 0, library.Search());
    }
}

TEST_F(ShopReply, HttpStatusIsNotLookedAt) {
    MapShopReply reply;
    reply.Int32(0).Int32(1);
    Add(reply, alps).Int32(3);
    for (const char* status : {"404 Not Found", "500 Internal Server Error", "201 Created"}) {
        SCOPED_TRACE(status);
        server.Answer(ConnectionScript{"HTTP/1.1 "s + status + "\r\nConnection: close\r\nContent-Length: " +
                                       std::to_string(reply.bytes.size()) + "\r\n\r\n" + reply.bytes});
        Expect({alps}, 3, library.Search());
    }
}

TEST_F(ShopReply, ReplyInChunksIsReadAsOne) {
    server.Answer(
        ConnectionScript{"HTTP/1.1 200 OK\r\nConnection: close\r\nTransfer-Encoding: chunked\r\n\r\n"
                         "1\r\n\0\r\n6\r\n\0\0\0\0\0\0\r\n5\r\n\0\7\0\0\0\r\n0\r\n\r\n"s});
    Expect({}, 7, library.Search());
}

TEST_F(ShopReply, BytesThatAreNoHttpHaveNoResults) {
    server.Answer(ConnectionScript{"\xFF\xFE\0\0garbage\n\n"s});
    Expect({}, 0, library.Search());
}

TEST_F(ShopReply, NoReplyHasNoResults) {
    server.Answer(ConnectionScript{""});
    Expect({}, 0, library.Search());
}

TEST_F(ShopReply, ResetInPlaceOfAReplyHasNoResults) {
    server.Answer(ConnectionScript{"", ConnectionScript::Ending::Reset});
    Expect({}, 0, library.Search());
}

TEST_F(ShopReply, ConnectionThatIsResetBeforeTheRequestHasNoResults) {
    server.Answer(ConnectionScript{"", ConnectionScript::Ending::Reset, false});
    Expect({}, 0, library.Search());
}

TEST_F(ShopReply, ResetInTheMiddleKeepsWholeResultsOnly) {
    MapShopReply reply;
    reply.Int32(0).Int32(1000);
    for (int i = 0; i < 500; ++i)
        Add(reply, alps);
    server.Answer(ConnectionScript{"HTTP/1.0 200 OK\r\n\r\n" + reply.bytes, ConnectionScript::Ending::Reset});
    const SearchOutcome outcome = library.Search();
    // A reset may overtake what was sent before it.
    EXPECT_LE(outcome.results.size(), 500U);
    for (const MapShopResult& result : outcome.results)
        Expect(alps, result);
    EXPECT_EQ(0, outcome.finalValue);
}
