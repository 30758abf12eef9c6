/* The program as whoever starts it meets it: arguments, exit codes, what goes where. */
#include <gmock/gmock.h>
#include <sys/wait.h>

#include <cstdlib>

#include "CommandFixture.h"
#include "LMOnlineVersion.h"
#include "Samples.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

class TranslationProgram : public CommandTest {
protected:
    /* Runs the program in the folder. */
    [[nodiscard]] Result Start(const std::string& arguments) const {
        const std::string line = "cd '" + PathOf("") + "' && '" ORVANDE_TRANSLATION_PROGRAM "' " + arguments +
                                 " </dev/null >.output 2>.errors";
        const int status = std::system(line.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Take(".output"), Take(".errors")};
    }
};

}  // namespace

TEST_F(TranslationProgram, HelpTellsEveryCommand) {
    const Result result = Start("--help");
    EXPECT_EQ(result.code, 0);
    for (const std::string command : {"template", "check", "convert", "merge", "pseudo"})
        EXPECT_THAT(result.output, HasSubstr("orvande-translation " + command + " "));
    EXPECT_EQ(result.errors, "");
}

TEST_F(TranslationProgram, EveryCommandTellsIt) {
    const std::string help = Start("--help").output;
    for (const std::string command : {"template", "check a", "convert", "merge a b", "pseudo"}) {
        EXPECT_EQ(Start(command + " --help").output, help);
        EXPECT_EQ(Start(command + " -h").output, help);
    }
    EXPECT_EQ(Start("check -- --help").code, 2);
}

TEST_F(TranslationProgram, FileThatMayNotGrowIsToldAndNotLeftBehind) {
    const std::string line = "cd '" + PathOf("") +
                             "' && ulimit -f 0 && '" ORVANDE_TRANSLATION_PROGRAM
                             "' template --output a.po 2>&1 >&- | grep -c '^orvande.*File too large$'";
    EXPECT_EQ(std::system((line + " >/dev/null").c_str()), 0);
    EXPECT_FALSE(Exists("a.po"));
}

TEST_F(TranslationProgram, VersionIsThatOfTheHeader) {
    EXPECT_EQ(Start("--version").output, "orvande-translation " + std::to_string(LM_ONLINE_VERSION_MAJOR) +
                                             "." + std::to_string(LM_ONLINE_VERSION_MINOR) + "." +
                                             std::to_string(LM_ONLINE_VERSION_PATCH) + "\n");
}

TEST_F(TranslationProgram, WhatCannotBeDoneIsOneSentenceAndExitCode2) {
    Put("a.txt", "Open\tOuvrir\n");
    for (const std::string arguments :
         {"", "frobnicate", "convert", "convert a.txt", "convert a.txt b.po c.po", "convert a.txt b.csv",
          "convert none.txt b.po", "convert a.txt none/b.po", "convert --output a.txt b.po", "merge a.txt",
          "merge a.txt a.txt --output", "merge a.txt a.txt --output b.csv", "merge a.txt none.po",
          "merge a.txt a.txt --output /dev/full"}) {
        const Result result = Start(arguments);
        EXPECT_EQ(result.code, 2) << arguments;
        EXPECT_THAT(result.errors, StartsWith("orvande-translation: ")) << arguments;
        EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1) << arguments;
        EXPECT_EQ(result.output, "") << arguments;
    }
}

TEST_F(TranslationProgram, MistakesAreExitCode1) {
    Put("a.txt", "Open\n");
    const Result result = Start("convert a.txt b.po");
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.errors, "a.txt:1: error: the line has no TAB between a text and its translation\n");
    EXPECT_FALSE(Exists("b.po"));
}

TEST_F(TranslationProgram, TemplateIsTranslatedMergedAndConverted) {
    EXPECT_EQ(Start("template --language French --output a.tsv").code, 0);
    EXPECT_EQ(Start("convert a.tsv a.po").code, 0);
    EXPECT_EQ(Start("merge a.po a.tsv --output b.tsv").code, 0);
    EXPECT_EQ(Take("a.tsv"), Take("b.tsv"));
    const Result result = Start("merge a.tsv b.tsv");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.output, StartsWith("\xFF\xFE#"));
}

TEST_F(TranslationProgram, WhatCannotBeToldIsAFailure) {
    for (const std::string arguments : {"--help >/dev/full", "--version >&-"}) {
        const int status = std::system(("'" ORVANDE_TRANSLATION_PROGRAM "' " + arguments + " 2>&-").c_str());
        ASSERT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), 2) << arguments;
    }
}
