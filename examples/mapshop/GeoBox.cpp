#include "GeoBox.h"

#include <cmath>
#include <cwchar>
#include <optional>

namespace {

constexpr int32_t unitsPerDegree = 100000;
constexpr int32_t dateLine = 180 * unitsPerDegree;

struct Edge {
    const wchar_t* name;
    int limit;  // degrees
};
constexpr Edge edges[] = {{L"south", 90}, {L"west", 180}, {L"north", 90}, {L"east", 180}};

/* Digits with at most one point among them and a sign before them: what wcstod takes beyond that (exponents,
 * hexadecimal digits, "inf") is not a coordinate. */
bool IsDecimal(const std::wstring& text) {
    const size_t start = text.find_first_not_of(L"+-") == 1 ? 1 : 0;
    const size_t point = text.find(L'.', start);
    const std::wstring digits = text.substr(start, point - start);
    const std::wstring fraction = point == std::wstring::npos ? L"" : text.substr(point + 1);
    const std::wstring all = digits + fraction;
    return !all.empty() && all.find_first_not_of(L"0123456789") == std::wstring::npos;
}

std::optional<double> ParseDegrees(const std::wstring& text) {
    if (!IsDecimal(text)) return std::nullopt;
    return std::wcstod(text.c_str(), nullptr);
}

/* Why `text` is no value for `edge`, or nothing. */
std::wstring ProblemOf(const std::wstring& text, const Edge& edge) {
    const std::optional<double> degrees = ParseDegrees(text);
    if (!degrees) return L"'" + text + L"' is not a number of degrees such as 47.5 (" + edge.name + L").";
    if (std::abs(*degrees) <= edge.limit) return {};
    const std::wstring limit = std::to_wstring(edge.limit);
    return text + L" is out of range: " + edge.name + L" lies between -" + limit + L" and " + limit +
           L" degrees.";
}

int32_t UnitsOf(const std::wstring& text) {
    return static_cast<int32_t>(std::lround(std::wcstod(text.c_str(), nullptr) * unitsPerDegree));
}

void Append(std::vector<GeoBox>& boxes, const GeoBox& box) {
    if (box.west <= box.east) {
        boxes.push_back(box);
        return;
    }
    boxes.push_back({box.south, box.west, box.north, dateLine});
    boxes.push_back({box.south, -dateLine, box.north, box.east});
}

}  // namespace

ParsedBoxes ParseBoxes(const std::vector<std::wstring>& degrees) {
    constexpr size_t edgeCount = std::size(edges);
    if (degrees.size() % edgeCount != 0) {
        return {{},
                L"A box has four numbers, SOUTH WEST NORTH EAST; " + std::to_wstring(degrees.size()) +
                    (degrees.size() == 1 ? L" was given." : L" were given.")};
    }
    ParsedBoxes parsed;
    for (size_t first = 0; first < degrees.size(); first += edgeCount) {
        int32_t units[edgeCount];
        for (size_t i = 0; i < edgeCount; ++i) {
            const std::wstring& text = degrees[first + i];
            if (std::wstring problem = ProblemOf(text, edges[i]); !problem.empty()) return {{}, problem};
            units[i] = UnitsOf(text);
        }
        if (units[0] > units[2]) {
            return {{},
                    L"South (" + degrees[first] + L") is greater than north (" + degrees[first + 2] + L")."};
        }
        Append(parsed.boxes, {units[0], units[1], units[2], units[3]});
    }
    return parsed;
}
