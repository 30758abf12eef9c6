/* Targets of fuzzing. A target takes any bytes, lets the code under test work on them, and requires what has
 * to hold whatever they are. Two drivers run the same targets: libFuzzer under sanitizers, which looks for
 * bytes that reach code not reached before (LibFuzzerMain.cpp), and a test that replays the kept inputs and
 * makes others of them for some seconds (FuzzTest.cpp).
 *
 * A target is a file NAMEFuzz.cpp, which adds it under NAME. Inputs to begin with are in corpus/NAME, words
 * that its inputs are made of in dictionaries/NAME.dict, and those that once were too much in cases/NAME. */
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <vector>

using FuzzBytes = std::span<const uint8_t>;

/* Made once for many runs, and destroyed when these are over. */
class FuzzTarget {
public:
    FuzzTarget() = default;
    FuzzTarget(const FuzzTarget&) = delete;
    FuzzTarget& operator=(const FuzzTarget&) = delete;
    virtual ~FuzzTarget() = default;

    /* Does the same for the same bytes, whatever was run before. */
    virtual void Run(FuzzBytes bytes) = 0;
};

struct NamedFuzzTarget {
    std::string name;
    std::unique_ptr<FuzzTarget> (*make)();
};

/* Its name, in what GoogleTest prints. */
void PrintTo(const NamedFuzzTarget& target, std::ostream* out);

/* All targets that are linked into the program. */
std::vector<NamedFuzzTarget>& FuzzTargets();

/* For the initialiser of a constant in a target's file. */
template <class Target>
bool AddFuzzTarget(const char* name) {
    FuzzTargets().push_back(
        {name, []() -> std::unique_ptr<FuzzTarget> { return std::make_unique<Target>(); }});
    return true;
}

/* Prints what does not hold, as a sentence that says what should, and aborts. */
void Require(bool holds, const char* what);
