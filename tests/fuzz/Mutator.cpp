#include "Mutator.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

constexpr size_t mostRandomBytes = 300;
constexpr size_t mostChanges = 8;

/* Where mistakes are likely: at the ends of ranges, and where signs change. */
constexpr int32_t edges[] = {
    0,         1,        -1,         2,         4,         127,       128,          255,    256,
    999,       1000,     1001,       0x7FFF,    0x8000,    0xFFFF,    99999,        100000, 100001,
    -90'00000, 90'00000, -180'00000, 180'00000, INT32_MAX, INT32_MIN, INT32_MAX - 1};

}  // namespace

Mutator::Mutator(const std::vector<std::string>& kept, const std::vector<std::string>& words)
    : inputs(kept), tokens(words) {}

std::string Mutator::Make(uint64_t seed, uint64_t number) {
    // Each input has a beginning of its own, so that one can be made without those before it.
    std::seed_seq mixed{static_cast<uint32_t>(seed), static_cast<uint32_t>(seed >> 32U),
                        static_cast<uint32_t>(number), static_cast<uint32_t>(number >> 32U)};
    uint32_t start[2];
    mixed.generate(std::begin(start), std::end(start));
    random.seed(static_cast<uint64_t>(start[0]) << 32U | start[1]);
    if (inputs.empty() || Below(16) == 0) return RandomBytes(mostRandomBytes);
    std::string input = inputs[Below(inputs.size())];
    for (size_t changes = 1 + Below(mostChanges); changes > 0; --changes)
        Change(input);
    return input;
}

size_t Mutator::Below(size_t limit) {
    return static_cast<size_t>(random() % limit);
}

void Mutator::Change(std::string& input) {
    const size_t at = Below(input.size() + 1);
    switch (Below(8)) {
        case 0:
            if (at < input.size()) input[at] = static_cast<char>(input[at] ^ 1 << Below(8));
            break;
        case 1:
            Overwrite(input, RandomBytes(2));
            break;
        case 2:
            Overwrite(input, RandomNumber());
            break;
        case 3:
            input.erase(at, 1 + Below(Below(64) + 1));
            break;
        case 4:
            input.insert(at, RandomWord());
            break;
        case 5:
            input.insert(at, PieceOf(input));
            break;
        case 6:
            input.insert(at, PieceOf(inputs[Below(inputs.size())]));
            break;
        default:
            Overwrite(input, RandomWord());
            break;
    }
}

void Mutator::Overwrite(std::string& input, const std::string& bytes) {
    input.replace(Below(input.size() + 1), bytes.size(), bytes);
}

std::string Mutator::RandomBytes(size_t most) {
    std::string bytes(Below(most + 1), '\0');
    std::ranges::generate(bytes, [this] { return static_cast<char>(random()); });
    return bytes;
}

std::string Mutator::RandomNumber() {
    const int32_t number = edges[Below(std::size(edges))];
    std::string bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

std::string Mutator::RandomWord() {
    return tokens.empty() ? RandomNumber() : tokens[Below(tokens.size())];
}

std::string Mutator::PieceOf(const std::string& input) {
    return input.substr(Below(input.size() + 1), 1 + Below(200));
}
