/* Ranges of the maps' files. */
#include "ServiceDownloadFixture.h"

using testing::HasSubstr;

TEST_F(ServiceDownload, RangeGetsItsBytesAndSaysWhichTheyAre) {
    const HttpReply reply = AskRange("/maps/california.map", "bytes=50000001-50000010");
    EXPECT_EQ(reply.status, 206);
    EXPECT_THAT(reply.headers, HasSubstr("Content-Range: bytes 50000001-50000010/67108864\r\n"));
    EXPECT_THAT(reply.headers, HasSubstr("Content-Length: 10\r\n"));
    EXPECT_EQ(reply.body, Bytes(california, 50000001, 10));
}

TEST_F(ServiceDownload, RangeOfTheFirstBytesIsNoWholeReply) {
    const HttpReply reply = AskRange("/maps/reunion.map", "bytes=0-9");
    EXPECT_EQ(reply.status, 206);
    EXPECT_THAT(reply.headers, HasSubstr("Content-Range: bytes 0-9/1105500\r\n"));
    EXPECT_EQ(reply.body, "Orvande ma");
}

TEST_F(ServiceDownload, RangeBeyondTheEndEndsWithTheFile) {
    const std::string last = Bytes(reunion, 1105490, 10);
    for (const char* range :
         {"bytes=1105490-1105500", "bytes=1105490-9223372036854775807", "bytes=1105490-", "bytes=-10"}) {
        SCOPED_TRACE(range);
        const HttpReply reply = AskRange("/maps/reunion.map", range);
        EXPECT_EQ(reply.status, 206);
        EXPECT_THAT(reply.headers, HasSubstr("Content-Range: bytes 1105490-1105499/1105500\r\n"));
        EXPECT_EQ(reply.body, last);
    }
}

TEST_F(ServiceDownload, RangeThatBeginsAtTheEndOrBeyondIsUnsatisfiable) {
    for (const char* range : {"bytes=1105500-1105500", "bytes=1105500-", "bytes=4294967296-4294967305",
                              "bytes=9223372036854775807-9223372036854775807", "bytes=-0"}) {
        SCOPED_TRACE(range);
        const HttpReply reply = AskRange("/maps/reunion.map", range);
        ExpectUnsatisfiable(reply);
        EXPECT_THAT(reply.headers, HasSubstr("Content-Range: bytes */1105500\r\n"));
    }
}

TEST_F(ServiceDownload, RangeThatCannotBeReadIsUnsatisfiable) {
    for (const std::string range :
         {"bytes=5-4", "bytes=-5-4", "bytes=0--1", "bytes=a-b", "lines=0-9", "bytes=18446744073709551616-",
          "bytes=0-18446744073709551616", "bytes=0-3,5-4"}) {
        SCOPED_TRACE(range);
        ExpectUnsatisfiable(AskRange("/maps/reunion.map", range));
    }
    ExpectUnsatisfiable(AskRange("/maps/reunion.map", "bytes=" + std::string(8000, '1') + '-'));
    EXPECT_EQ(AskRange("/maps/reunion.map", "bytes=0-9").status, 206);
}

TEST_F(ServiceDownload, SeveralRangesGetTheWholeMap) {
    const HttpReply reply = AskRange("/maps/reunion.map", "bytes=0-1,3-4");
    EXPECT_EQ(reply.status, 200);
    EXPECT_THAT(reply.headers, HasSubstr("Content-Length: 1105500\r\n"));
}

TEST_F(ServiceDownload, ConditionOnARangeDoesNotHold) {
    const HttpReply reply = Ask("GET", "/maps/reunion.map", "Range: bytes=0-9\r\nIf-Range: \"tag\"\r\n");
    EXPECT_EQ(reply.status, 200);
    EXPECT_THAT(reply.headers, HasSubstr("Content-Length: 1105500\r\n"));
}

TEST_F(ServiceDownload, MapOfOneByteHasOneRange) {
    EXPECT_EQ(Ask("GET", "/maps/rockall.map").body, "O");
    EXPECT_EQ(AskRange("/maps/rockall.map", "bytes=0-0").body, "O");
    EXPECT_EQ(AskRange("/maps/rockall.map", "bytes=1-1").status, 416);
}

TEST_F(ServiceDownload, RangeOfAPageGetsThePage) {
    const HttpReply whole = Ask("GET", "/forgot.htm");
    const HttpReply reply = AskRange("/forgot.htm", "bytes=0-9");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, whole.body);
}
