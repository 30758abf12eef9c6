#include "GeoBox.h"

#include <cmath>
#include <cwchar>
#include <iterator>

#include "NumberText.h"

namespace {

constexpr int32_t unitsPerDegree = 100000;

struct Edge {
    const wchar_t* name;
    int limit;  // degrees
};
constexpr Edge edges[] = {{L"south", 90}, {L"west", 180}, {L"north", 90}, {L"east", 180}};

/* Whether the text is digits with at most one point among them and perhaps a sign before them: what else
 * wcstod takes (exponents, hexadecimal digits, "inf") is not a coordinate. */
bool IsDecimal(const std::wstring& text) {
    const size_t start = text.find_first_not_of(L"+-") == 1 ? 1 : 0;
    const size_t point = text.find(L'.', start);
    const std::wstring digits = text.substr(start, point - start);
    const std::wstring fraction = point == std::wstring::npos ? L"" : text.substr(point + 1);
    const std::wstring all = digits + fraction;
    return !all.empty() && all.find_first_not_of(L"0123456789") == std::wstring::npos;
}

/* Reads `text` into `units` (of 1e-5 degrees). Returns an empty text, or why that cannot be done. */
std::wstring ReadEdge(const std::wstring& text, const Edge& edge, int32_t& units) {
    if (!IsDecimal(text)) {
        return L"'" + text + L"' is not a number of degrees such as 47.5 (" + edge.name + L").";
    }
    const double degrees = std::wcstod(text.c_str(), nullptr);
    if (std::abs(degrees) > edge.limit) {
        const std::wstring limit = DecimalText(edge.limit);
        return text + L" is out of range: " + edge.name + L" lies between -" + limit + L" and " + limit +
               L" degrees.";
    }
    // To the nearest unit, without lround, which the device's runtime does not have.
    units = static_cast<int32_t>(degrees * unitsPerDegree + (degrees < 0 ? -0.5 : 0.5));
    return {};
}

/* Reads the box that four texts describe. Returns an empty text, or why they describe none. */
std::wstring ReadBox(const std::wstring* texts, GeoBox& box) {
    int32_t* const targets[] = {&box.south, &box.west, &box.north, &box.east};
    for (size_t i = 0; i < std::size(edges); ++i) {
        std::wstring problem = ReadEdge(texts[i], edges[i], *targets[i]);
        if (!problem.empty()) return problem;
    }
    if (box.south <= box.north) return {};
    return L"South (" + texts[0] + L") is greater than north (" + texts[2] + L").";
}

}  // namespace

ParsedBoxes ParseBoxes(const std::vector<std::wstring>& degrees) {
    const size_t count = degrees.size();
    if (count % std::size(edges) != 0) {
        return {{},
                L"A box has four numbers, SOUTH WEST NORTH EAST; " + DecimalText(count) +
                    (count == 1 ? L" was given." : L" were given.")};
    }
    ParsedBoxes parsed;
    for (size_t first = 0; first < count; first += std::size(edges)) {
        GeoBox box{};
        if (std::wstring problem = ReadBox(&degrees[first], box); !problem.empty()) return {{}, problem};
        parsed.boxes.push_back(box);
    }
    return parsed;
}
