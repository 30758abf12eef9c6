/* What runs the targets: it notices what does not hold, and its inputs can be made again. */
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <set>

#include "FailureKeeper.h"
#include "FuzzTarget.h"
#include "KeptInputs.h"
#include "Mutator.h"
#include "service/TemporaryFolder.h"

namespace {

const std::vector<std::string> kept{"first input", "second"};
const std::vector<std::string> words{"word"};

class FuzzDriver : public testing::Test {
protected:
    [[nodiscard]] std::string PathOf(const char* name) const { return (folder.Path() / name).string(); }

    std::vector<std::string> WordsOf(const char* lines) {
        std::ofstream(PathOf("words")) << lines;
        return ReadWords(PathOf("words"));
    }

    TemporaryFolder folder;
};

using FuzzDriverDeathTest = FuzzDriver;

/* The program, as far as the target of a failing test is concerned. */
template <class Action>
void Try(const std::string& file, Action action) {
    FailureKeeper keeper(file);
    keeper.Try(std::string("too\0much", 8));
    action();
}

}  // namespace

TEST_F(FuzzDriverDeathTest, WhatDoesNotHoldEndsTheProgramAndLeavesItsInput) {
    const std::string file = PathOf("kept");
    EXPECT_EXIT(Try(file, [] { Require(1 > 2, "one is more than two"); }), testing::ExitedWithCode(1),
                "This does not hold: one is more than two\nThis input ends the program: .*kept");
    EXPECT_EQ(std::string("too\0much", 8), ReadInput(file));
}

TEST_F(FuzzDriverDeathTest, InputThatTakesTooLongEndsTheProgramAndIsLeft) {
    const std::string file = PathOf("kept");
    const auto wait = [] {
        FailureKeeper::GiveSeconds(1);
        for (volatile bool isWaiting = true; isWaiting;) {
        }
    };
    EXPECT_EXIT(Try(file, wait), testing::ExitedWithCode(1), "This input takes too long: .*kept");
    EXPECT_EQ(8u, ReadInput(file).size());
}

TEST_F(FuzzDriver, WhatHoldsGoesOn) {
    Require(true, "one is less than two");
    Try(PathOf("kept"), [] {});
    EXPECT_FALSE(std::filesystem::exists(PathOf("kept")));
}

TEST_F(FuzzDriver, SameNumbersMakeTheSameInputWhateverWasMadeBefore) {
    Mutator one(kept, words);
    Mutator other(kept, words);
    for (uint64_t number = 0; number < 100; ++number)
        one.Make(1, number);
    for (uint64_t number = 0; number < 100; ++number)
        EXPECT_EQ(one.Make(7, number), other.Make(7, number));
}

TEST_F(FuzzDriver, OtherNumbersMakeOtherInputs) {
    Mutator mutator(kept, words);
    std::set<std::string> made;
    for (uint64_t number = 0; number < 1000; ++number) {
        made.insert(mutator.Make(1, number));
        made.insert(mutator.Make(2, number));
    }
    EXPECT_GT(made.size(), 1800u);
}

TEST_F(FuzzDriver, InputsAreMadeOfWhatIsKeptAndOfWords) {
    Mutator mutator(kept, words);
    size_t ofKept = 0;
    size_t ofWords = 0;
    for (uint64_t number = 0; number < 1000; ++number) {
        const std::string input = mutator.Make(3, number);
        if (input.find("input") != std::string::npos) ++ofKept;
        if (input.find("word") != std::string::npos) ++ofWords;
    }
    EXPECT_GT(ofKept, 100u);
    EXPECT_GT(ofWords, 100u);
}

TEST_F(FuzzDriver, WithoutAnythingKeptInputsAreRandom) {
    const std::vector<std::string> none;
    EXPECT_NE(Mutator(none, none).Make(1, 1), Mutator(none, none).Make(1, 2));
}

TEST_F(FuzzDriver, WordsAreReadAsTheyAreWritten) {
    const std::vector<std::string> expected{"a b", std::string("\0\xFF", 2), "\"\\"};
    EXPECT_EQ(expected, WordsOf("# Comment\n\n\"a b\"\n\"\\x00\\xfF\"\n\"\\\"\\\\\"\n"));
    EXPECT_TRUE(ReadWords(PathOf("none")).empty());
}

TEST_F(FuzzDriver, LineThatIsNoWordIsRefused) {
    for (const char* const line : {"word", "\"word", "\"\\xZZ\"", "\"\\x1\"", "\"\\n\"", "\"\\\""})
        EXPECT_THROW(WordsOf(line), std::runtime_error) << line;
}
