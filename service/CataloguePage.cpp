#include "CataloguePage.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

constexpr std::string_view head = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>Orvande map shop</title>
<style>
body { font-family: sans-serif; margin: 2em; }
table { border-collapse: collapse; }
th, td { border: 1px solid #bbb; padding: 0.3em 0.6em; text-align: left; vertical-align: top; }
td.number { text-align: right; white-space: nowrap; }
</style>
</head>
<body>
<h1>Orvande map shop</h1>
)";

constexpr std::string_view tableHead =
    "<table>\n<tr><th>Map</th><th>Size (KB)</th><th>Path</th><th>Area (south, west, north, east)</th>"
    "<th>Description</th></tr>\n";

constexpr std::string_view foot = "</table>\n</body>\n</html>\n";

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char letter : text) {
        switch (letter) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            case '\'':
                escaped += "&#39;";
                break;
            default:
                escaped += letter;
        }
    }
    return escaped;
}

std::string Degrees(int32_t units) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%s%d.%05d", units < 0 ? "-" : "",
                  std::abs(units) / unitsPerDegree, std::abs(units) % unitsPerDegree);
    return text.data();
}

std::string Row(const MapRecord& map) {
    return "<tr><td>" + Escaped(map.name) + "</td><td class=\"number\">" + std::to_string(map.kilobytes) +
           "</td><td>" + Escaped(map.path) + "</td><td class=\"number\">" + Degrees(map.box.south) + ", " +
           Degrees(map.box.west) + ", " + Degrees(map.box.north) + ", " + Degrees(map.box.east) +
           "</td><td>" + Escaped(map.description) + "</td></tr>\n";
}

std::string Summary(size_t shown, int32_t total) {
    std::string summary = "<p>" + std::to_string(total) + (total == 1 ? " map" : " maps");
    if (shown < static_cast<size_t>(total))
        summary += ", of which this page shows the first " + std::to_string(shown);
    return summary + ".</p>\n";
}

}  // namespace

std::string CataloguePage(std::span<const MapRecord> maps, int32_t total) {
    std::string page(head);
    page += Summary(maps.size(), total);
    page += tableHead;
    for (const MapRecord& map : maps)
        page += Row(map);
    page += foot;
    return page;
}
