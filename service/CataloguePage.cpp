#include "CataloguePage.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "HtmlPage.h"

namespace {

// A screen that is too narrow for the table shows each of its rows as a block, and says what was in the head.
constexpr std::string_view style = R"(
table { border-collapse: collapse; table-layout: fixed; width: 100%; }
th, td { border: 1px solid #bbb; padding: 0.3em 0.6em; text-align: start; vertical-align: top; }
.size { text-align: right; white-space: nowrap; font-variant-numeric: tabular-nums; }
th.size { width: 7em; }
th.name, th.path, th.area { width: 19%; }
@media (max-width: 64em) {
  table, tbody, tr, td { display: block; }
  thead { display: none; }
  tr { border-top: 1px solid #bbb; padding: 0.5em 0; }
  td { border: 0; padding: 0; }
  .name { font-weight: bold; }
  .size { text-align: start; }
  .size::after { content: " KB"; }
  .area::before { content: "South, west, north, east: "; }
}
)";

constexpr std::string_view tableHead =
    "<table>\n<thead><tr><th class=\"name\">Map</th><th class=\"size\">Size (KB)</th>"
    "<th class=\"path\">Path</th><th class=\"area\">South, west, north, east</th><th>Description</th></tr>"
    "</thead>\n<tbody>\n";

constexpr std::string_view tableFoot = "</tbody>\n</table>\n";

std::string Degrees(int32_t units) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%s%d.%05d", units < 0 ? "-" : "",
                  std::abs(units) / unitsPerDegree, std::abs(units) % unitsPerDegree);
    return text.data();
}

std::string Path(const std::string& path, bool isLink) {
    const std::string text = EscapedHtml(path);
    return isLink ? "<a href=\"" + text + "\" download>" + text + "</a>" : text;
}

/* A name in a script that runs from right to left stands at its place beside the others all the same; a
 * description is a paragraph, and begins on the side of its script. */
std::string Row(const MapRecord& map, bool hasFile) {
    return "<tr><td class=\"name\"><bdi>" + EscapedHtml(map.name) + "</bdi></td><td class=\"size\">" +
           std::to_string(map.kilobytes) + "</td><td class=\"path\">" + Path(map.path, hasFile) +
           "</td><td class=\"area\">" + Degrees(map.box.south) + ", " + Degrees(map.box.west) + ", " +
           Degrees(map.box.north) + ", " + Degrees(map.box.east) + "</td><td dir=\"auto\">" +
           EscapedHtml(map.description) + "</td></tr>\n";
}

std::string Summary(size_t shown, int32_t total) {
    std::string summary = "<p>" + std::to_string(total) + (total == 1 ? " map" : " maps");
    if (shown < static_cast<size_t>(total))
        summary += ", of which this page shows the first " + std::to_string(shown);
    return summary + ".</p>\n";
}

}  // namespace

std::string CataloguePage(std::span<const MapRecord> maps, int32_t total,
                          const std::function<bool(const std::string& path)>& hasFile) {
    std::string body("<h1>Orvande map shop</h1>\n");
    body += Summary(maps.size(), total);
    body += tableHead;
    for (const MapRecord& map : maps)
        body += Row(map, hasFile(map.path));
    body += tableFoot;
    return HtmlPage("Orvande map shop", style, body);
}
