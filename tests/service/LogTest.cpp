#include "Log.h"

#include <gtest/gtest.h>

namespace {

std::string Logged(std::string_view text) {
    testing::internal::CaptureStderr();
    LogLine(text);
    return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(Log, LineEndsInALineFeed) {
    EXPECT_EQ(Logged("GET / 200 5"), "GET / 200 5\n");
}

TEST(Log, TextBeyondAsciiStaysAsItIs) {
    EXPECT_EQ(Logged("/\xC3\x8Ele"), "/\xC3\x8Ele\n");
}

TEST(Log, ControlBytesCannotStartAnotherLine) {
    EXPECT_EQ(Logged("a\r\nb\x1B[0m\x7F"), "a\\x0d\\x0ab\\x1b[0m\\x7f\n");
}
