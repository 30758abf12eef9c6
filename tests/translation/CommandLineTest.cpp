#include "CommandLine.h"

#include <gmock/gmock.h>

#include "files/Complaint.h"

using testing::ElementsAre;

namespace {

CommandLine Read(const std::vector<std::string>& arguments) {
    return ReadCommandLine("merge OLD NEW [--output FILE]", {1, 2}, {"--output"}, arguments);
}

std::string ErrorOf(const std::vector<std::string>& arguments) {
    try {
        Read(arguments);
    } catch (const UsageError& error) {
        return error.what();
    }
    return "none";
}

}  // namespace

TEST(CommandLine, FilesAndOptionsComeInAnyOrder) {
    const CommandLine line = Read({"a", "--output", "c", "b"});
    EXPECT_THAT(line.files, ElementsAre("a", "b"));
    EXPECT_EQ(line.Value("--output", "-"), "c");
    EXPECT_EQ(Read({"a"}).Value("--output", "-"), "-");
}

TEST(CommandLine, ValueMayFollowAnEqualsSign) {
    EXPECT_EQ(Read({"a", "--output=b=c"}).Value("--output", ""), "b=c");
    EXPECT_EQ(Read({"--output", "--output", "a"}).Value("--output", ""), "--output");
}

TEST(CommandLine, LastOfTwoCounts) {
    EXPECT_EQ(Read({"a", "--output=b", "--output", "c"}).Value("--output", ""), "c");
}

TEST(CommandLine, DashIsAFileAndTwoDashesEndTheOptions) {
    EXPECT_THAT(Read({"-", "a"}).files, ElementsAre("-", "a"));
    EXPECT_THAT(Read({"--", "--output", "-x"}).files, ElementsAre("--output", "-x"));
}

TEST(CommandLine, MistakesAreOneSentence) {
    const std::string usage = "; the command is merge OLD NEW [--output FILE]";
    EXPECT_EQ(ErrorOf({"a", "--out", "b"}), "unknown option '--out'" + usage);
    EXPECT_EQ(ErrorOf({"a", "-o"}), "unknown option '-o'" + usage);
    EXPECT_EQ(ErrorOf({"a", "--output"}), "--output needs a value");
    EXPECT_EQ(ErrorOf({"a", "--output="}), "--output needs a value");
    EXPECT_EQ(ErrorOf({"a", "--output", ""}), "--output needs a value");
    EXPECT_EQ(ErrorOf({}), "0 files are named" + usage);
    EXPECT_EQ(ErrorOf({"a", "b", "c"}), "3 files are named" + usage);
}
