/* What the loader refuses of programs. */
#include <gmock/gmock.h>

#include "Program.h"
#include "simulator/SimulatorTest.h"

using ProgramOnDevice = SimulatorTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

TEST_F(ProgramOnDevice, FileThatIsNoneIsNotStarted) {
    const ProgramResult result = RunProgram("/none.exe", u"");
    EXPECT_EQ(0xFFFFFFFF, result.exitCode);
    EXPECT_EQ("", result.output);
    EXPECT_THAT(TakeViolations(), ElementsAre(StartsWith("/none.exe cannot be started: ")));
}

TEST_F(ProgramOnDevice, TextIsConvertedToUtf8WhereThereIsRoomForIt) {
    char bytes[4] = "xyz";
    EXPECT_EQ(4, WideCharToMultiByte(CP_UTF8, 0, TEXT("a\u20ac"), 2, nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(4, WideCharToMultiByte(CP_UTF8, 0, TEXT("a\u20ac"), 2, bytes, 4, nullptr, nullptr));
    EXPECT_EQ("a\u20ac", std::string(bytes, 4));
    EXPECT_EQ(0, WideCharToMultiByte(CP_UTF8, 0, TEXT("bcd"), -1, bytes, 3, nullptr, nullptr));
    EXPECT_EQ(DWORD{ERROR_INSUFFICIENT_BUFFER}, GetLastError());
    EXPECT_EQ('a', bytes[0]);
}

TEST_F(ProgramOnDevice, OtherConversionsAreViolations) {
    EXPECT_EQ(0, WideCharToMultiByte(CP_ACP, 0, TEXT("a"), 1, nullptr, 0, nullptr, nullptr));
    EXPECT_EQ(0, WideCharToMultiByte(CP_UTF8, 0, TEXT("a"), -2, nullptr, 0, nullptr, nullptr));
    EXPECT_THAT(TakeViolations(), ElementsAre(HasSubstr("this conversion is not simulated"),
                                              HasSubstr("this conversion is not simulated")));
}
