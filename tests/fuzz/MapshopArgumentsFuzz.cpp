/* The command lines of mapshop: boxes, hosts, paths and numbers. The first byte chooses what the arguments
 * are taken for; they follow, each ended by a zero byte, in Latin-1. */
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "Box.h"
#include "FuzzInput.h"
#include "mapshop/GeoBox.h"
#include "mapshop/HexDump.h"
#include "mapshop/NumberText.h"
#include "mapshop/WebArguments.h"

namespace {

using TextArguments = std::vector<std::wstring>;

void RequireSentence(const std::wstring& problem) {
    Require(problem.ends_with(L"."), "a problem is a sentence");
}

/* The edge in units of 1e-5 degrees, and as it was written. */
void RequireEdge(int32_t edge, const std::wstring& text) {
    const double degrees = std::wcstod(text.c_str(), nullptr);
    Require(std::abs(edge - degrees * 100000) <= 0.500001, "an edge is what was written");
}

void RequireBoxes(const TextArguments& arguments) {
    const ParsedBoxes parsed = ParseBoxes(arguments);
    if (!parsed.problem.empty()) return RequireSentence(parsed.problem);
    Require(parsed.boxes.size() * 4 == arguments.size(), "four numbers are a box");
    for (size_t at = 0; at < parsed.boxes.size(); ++at) {
        const GeoBox& box = parsed.boxes[at];
        Require(IsOnGlobe({box.south, box.west, box.north, box.east}), "the service takes every box");
        RequireEdge(box.south, arguments[4 * at]);
        RequireEdge(box.west, arguments[4 * at + 1]);
        RequireEdge(box.north, arguments[4 * at + 2]);
        RequireEdge(box.east, arguments[4 * at + 3]);
    }
}

void RequireWebArguments(const TextArguments& arguments, size_t least) {
    const size_t most = least + 1;
    const WebArguments parsed = ParseWebArguments(arguments, least, most, L"PATH FILE");
    if (!parsed.problem.empty()) return RequireSentence(parsed.problem);
    Require(parsed.operands.size() >= least && parsed.operands.size() <= most, "no operand is missing");
    Require(parsed.operands[0].starts_with(L"/"), "a path begins with a slash");
    Require(!parsed.host.empty(), "there is a host");
    Require(parsed.host.find_first_of(L":/\\ ") == std::wstring::npos, "a host is a name");
    for (const std::wstring& operand : parsed.operands) {
        Require(!operand.starts_with(L"--"), "no option is an operand");
        Require(std::ranges::find(arguments, operand) != arguments.end(), "operands are arguments");
    }
}

void RequireNumber(const std::wstring& text) {
    const std::string narrow(text.begin(), text.end());
    int64_t number = 0;
    const char* const end = narrow.data() + narrow.size();
    const auto read = std::from_chars(narrow.data(), end, number);
    const bool isNumber = read.ec == std::errc() && read.ptr == end && narrow.front() != '-';
    const std::optional<int64_t> parsed = ParseCount(text);
    Require(parsed.has_value() == isNumber, "digits alone are a number");
    if (!parsed) return;
    Require(*parsed == number, "a number is what was written");
    Require(ParseCount(DecimalText(number)) == number, "numbers are written as they are read");
    std::wstring grouped = GroupedDigits(number);
    std::erase(grouped, L',');
    Require(grouped == DecimalText(number), "grouped digits are the same");
}

void RequireDump(const std::wstring& text) {
    const std::vector<uint8_t> bytes(text.begin(), text.begin() + std::min<ptrdiff_t>(16, std::ssize(text)));
    const std::wstring line = HexDumpLine(bytes.empty() ? 0U : bytes[0], 8, bytes);
    Require(line.size() == 8 + 2 + 49 + 2 + bytes.size() + 1, "the lines of a dump are aligned");
}

class MapshopArguments final : public FuzzTarget {
public:
    void Run(FuzzBytes bytes) override {
        FuzzInput input(bytes);
        const uint8_t kind = input.TakeByte();
        TextArguments arguments;
        while (!input.IsEmpty()) {
            const std::string line = input.TakeLine();
            std::wstring& argument = arguments.emplace_back();
            for (const char byte : line)
                argument += static_cast<wchar_t>(static_cast<unsigned char>(byte));
        }
        if (kind % 4 == 0) return RequireBoxes(arguments);
        if (kind % 4 == 1) return RequireWebArguments(arguments, 2);
        if (kind % 4 == 2) return RequireWebArguments(arguments, 3);
        for (const std::wstring& argument : arguments) {
            RequireNumber(argument);
            RequireDump(argument);
        }
    }
};

const bool isAdded = AddFuzzTarget<MapshopArguments>("MapshopArguments");

}  // namespace
