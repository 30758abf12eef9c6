#include "MapStoreHandler.h"

#include <gmock/gmock.h>

#include "MadeUpMaps.h"
#include "SampleMaps.h"
#include "TemporaryFolder.h"
#include "WireBytes.h"

using namespace std::string_view_literals;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class MapStoreHandler : public testing::Test {
protected:
    /* A request that is refused: a reply of nothing but the status, and a word for the log. */
    void ExpectRefused(std::string_view request, int32_t status) const {
        const CgiReply reply = HandleMapStore(catalogue, request);
        EXPECT_EQ(reply.body, Int32Bytes(status));
        EXPECT_THAT(reply.refusal, StartsWith("refused with status " + std::to_string(status) + ": "));
    }

    TemporaryFolder folder;
    MapCatalogue catalogue{
        folder.Path(), SourceOf({{"\xC3\x8Ele", 1234, "/maps/ile.map", "An \xE2\x82\xAC", {0, 0, 100, 100}},
                                 {"Far", 5, "/maps/far.map", "", {5000, 5000, 6000, 6000}}})};
};

}  // namespace

TEST_F(MapStoreHandler, ReplyOfOneEntryIsByteForByte) {
    const CgiReply reply = HandleMapStore(catalogue,
                                          "\x65\0\0\0\1\0\0\0"      // code 101, 1 item
                                          "\x32\0\0\0\x32\0\0\0"    // south 50, west 50
                                          "\x46\0\0\0\x46\0\0\0"sv  // north 70, east 70
    );
    EXPECT_EQ(reply.body,
              "\0\0\0\0\1\0\0\0"                                   // status 0, 1 entry
              "\4\0\0\0"                                           // a map
              "\3\0\0\0\xCE\0l\0e\0"                               // its name
              "\xD2\4\0\0"                                         // 1234 KB
              "\x0D\0\0\0/\0m\0a\0p\0s\0/\0i\0l\0e\0.\0m\0a\0p\0"  // its path
              "\4\0\0\0A\0n\0 \0\xAC\x20"                          // its description
              "\2\0\0\0"sv);                                       // 2 maps in all
    EXPECT_THAT(reply.refusal, IsEmpty());
}

TEST_F(MapStoreHandler, RequestWithoutItemsGetsEveryMapInOrder) {
    const std::string far =
        Int32Bytes(4) + TextBytes(u"Far") + Int32Bytes(5) + TextBytes(u"/maps/far.map") + TextBytes(u"");
    const std::string ile = Int32Bytes(4) + TextBytes(u"\u00CEle") + Int32Bytes(1234) +
                            TextBytes(u"/maps/ile.map") + TextBytes(u"An \u20AC");
    EXPECT_EQ(HandleMapStore(catalogue, SearchBytes({})).body,
              Int32Bytes(0) + Int32Bytes(2) + far + ile + Int32Bytes(2));
}

TEST_F(MapStoreHandler, SearchThatFindsNothingStillTellsTheCatalogueSize) {
    const CgiReply reply = HandleMapStore(catalogue, SearchBytes({{-9000000, 0, -8000000, 0}}));
    EXPECT_EQ(reply.body, Int32Bytes(0) + Int32Bytes(0) + Int32Bytes(2));
    EXPECT_THAT(reply.refusal, IsEmpty());
}

TEST_F(MapStoreHandler, EmptyCatalogueAnswersWithTwoZerosAfterTheStatus) {
    const TemporaryFolder empty;
    EXPECT_EQ(HandleMapStore(MapCatalogue(empty.Path(), MadeUpMaps(0)), SearchBytes({})).body,
              std::string(12, '\0'));
}

TEST_F(MapStoreHandler, MapThatMeetsTwoItemsIsSentOnce) {
    const CgiReply reply = HandleMapStore(catalogue, SearchBytes({{0, 0, 1, 1}, {100, 100, 200, 200}}));
    EXPECT_THAT(reply.body, StartsWith(Int32Bytes(0) + Int32Bytes(1) + Int32Bytes(4)));
    EXPECT_THAT(reply.body, EndsWith(TextBytes(u"An \u20AC") + Int32Bytes(2)));
}

TEST_F(MapStoreHandler, EveryTruncationOfARequestIsRefused) {
    const std::string request = SearchBytes({{0, 0, 1, 1}, {2, 2, 3, 3}});
    ASSERT_EQ(HandleMapStore(catalogue, request).body.substr(0, 4), Int32Bytes(0));
    for (size_t size = 0; size < request.size(); ++size) {
        SCOPED_TRACE(size);
        ExpectRefused(request.substr(0, size), size < 8 ? 1 : 4);
    }
}

TEST_F(MapStoreHandler, BytesAfterTheLastItemAreRefused) {
    ExpectRefused(SearchBytes({}) + '\0', 4);
    ExpectRefused(SearchBytes({{0, 0, 1, 1}}) + '\0', 4);
    ExpectRefused(SearchBytes({{0, 0, 1, 1}}) + ItemBytes({0, 0, 1, 1}), 4);
}

TEST_F(MapStoreHandler, OtherRequestCodesAreRefused) {
    for (const int64_t code : {0, 8, 10, 100, 102, -101, 0x65000000}) {
        ExpectRefused(Int32Bytes(code) + Int32Bytes(0), 2);
    }
}

TEST_F(MapStoreHandler, HostileCountsAreRefused) {
    for (const int64_t count : {int64_t{-1}, int64_t{INT32_MIN}, int64_t{INT32_MAX}, int64_t{1001},
                                int64_t{0x10000000}, int64_t{0x10000001}}) {
        ExpectRefused(Int32Bytes(101) + Int32Bytes(count), 3);
        ExpectRefused(Int32Bytes(101) + Int32Bytes(count) + ItemBytes({0, 0, 1, 1}), 3);
    }
}

TEST_F(MapStoreHandler, AThousandItemsAreTaken) {
    const CgiReply reply = HandleMapStore(catalogue, SearchBytes(std::vector<Box>(1000, Box{0, 0, 1, 1})));
    EXPECT_THAT(reply.body, StartsWith(Int32Bytes(0) + Int32Bytes(1)));
}

TEST_F(MapStoreHandler, ItemsThatAreNoBoxOnTheGlobeAreRefused) {
    ExpectRefused(SearchBytes({{1, 0, 0, 0}}), 5);
    ExpectRefused(SearchBytes({{0, 0, 1, 1}, {0, 0, 9000001, 0}}), 5);
    ExpectRefused(SearchBytes({{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}}), 5);
}

TEST_F(MapStoreHandler, ItemAcrossTheAntimeridianIsTaken) {
    const CgiReply reply = HandleMapStore(catalogue, SearchBytes({{0, 17000000, 1, -17000000}}));
    EXPECT_EQ(reply.body, Int32Bytes(0) + Int32Bytes(0) + Int32Bytes(2));
}

TEST_F(MapStoreHandler, DatabaseThatFailsIsAStatusOfItsOwn) {
    Database(folder.Path() / "catalogue.db").Execute("DROP TABLE map");
    ExpectRefused(SearchBytes({}), 6);
    ExpectRefused(SearchBytes({{0, 0, 1, 1}}), 6);
}

TEST_F(MapStoreHandler, TenThousandMapsAreSentWhole) {
    const TemporaryFolder large;
    const std::string body =
        HandleMapStore(MapCatalogue(large.Path(), MadeUpMaps(10000)), SearchBytes({})).body;
    EXPECT_THAT(body, StartsWith(Int32Bytes(0) + Int32Bytes(10000) + Int32Bytes(4) +
                                 TextBytes(u"Made-up map 0000001")));
    EXPECT_THAT(body,
                EndsWith(TextBytes(u"Map 10000 of 10000, made up for large searches.") + Int32Bytes(10000)));
}
