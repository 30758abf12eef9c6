/* Makes inputs of kept ones, at random and yet the same for the same numbers. */
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

class Mutator {
public:
    /* `kept`: inputs to make others of; `words`: what they may be made of. Both must outlive it, and may be
     * empty. */
    Mutator(const std::vector<std::string>& kept, const std::vector<std::string>& words);

    /* The input of that number in the run of that seed: mostly a kept one with a few changes, else random
     * bytes. At most some kilobytes longer than the longest that is kept. */
    std::string Make(uint64_t seed, uint64_t number);

private:
    size_t Below(size_t limit);
    void Change(std::string& input);
    void Overwrite(std::string& input, const std::string& bytes);
    std::string RandomBytes(size_t most);
    std::string RandomNumber();
    std::string RandomWord();
    std::string PieceOf(const std::string& input);

    const std::vector<std::string>& inputs;
    const std::vector<std::string>& tokens;
    std::mt19937_64 random;
};
