#include <cstdint>

#include "Commands.h"
#include "Console.h"
#include "FailureText.h"
#include "GeoBox.h"
#include "NumberText.h"
#include "OnlineLibrary.h"
#include "TextTable.h"

namespace {

std::wstring Counted(int64_t count, const std::wstring& noun) {
    return DecimalText(count) + L" " + noun + (count == 1 ? L"" : L"s");
}

struct Results {
    std::vector<MapShopResult> maps;
    int32_t catalogueSize = 0;  // the number that ends the service's answer
    DWORD cause = 0;            // why these are not all; 0 when they are
};

/* The library's part in a search. */
struct ShopFunctions {
    LMMapShopSearchFunction search;
    LMMapShopGetNextFunction getNext;
    LMMapShopCloseFunction close;
};

Results Search(const ShopFunctions& shop, const std::vector<GeoBox>& boxes) {
    Results results;
    MapShopSearch* const search = shop.search(boxes.data(), static_cast<int32_t>(boxes.size()));
    results.cause = GetLastError();
    // Without memory for a search there is none; the two take that for an empty one.
    MapShopResult map;
    while (shop.getNext(search, &map) != 0)
        results.maps.push_back(map);
    results.catalogueSize = shop.close(search);
    return results;
}

void PrintTable(const std::vector<MapShopResult>& maps) {
    constexpr size_t widestName = 28;
    constexpr size_t leastDescription = 30;
    TextTable table(
        {{L"NAME", widestName}, {L"SIZE", TableColumn::whole, true}, {L"PATH"}, {L"DESCRIPTION"}});
    for (const MapShopResult& map : maps) {
        table.AddRow({map.text1, GroupedDigits(map.number) + L" KB", map.text2, map.text3});
    }
    table.FitLastColumn(LineWidth(Output::standard), leastDescription);
    for (const std::wstring& line : table.Lines())
        PrintLine(line);
}

/* Reports why there are no results, or why these are not all. */
ExitCode ReportFailure(const Results& results) {
    const std::wstring lead =
        results.maps.empty() ? L"The search brought nothing" : L"These are not all maps";
    PrintError(FailureSentence(lead, results.cause, {MAPSHOP_DEFAULT_HOST, L"the map shop"}));
    return exitNoAnswer;
}

/* Searches for the boxes of the arguments (see ParseBoxes; none: everything). */
ExitCode Run(const std::vector<std::wstring>& arguments) {
    const ParsedBoxes parsed = ParseBoxes(arguments);
    if (!parsed.problem.empty()) {
        PrintError(parsed.problem);
        return exitUsage;
    }
    OnlineLibrary library;
    const ShopFunctions shop = {library.Find("LMMapShopSearch"), library.Find("LMMapShopGetNext"),
                                library.Find("LMMapShopClose")};
    if (!library.Problem().empty()) {
        PrintError(library.Problem());
        return exitLibraryFailed;
    }
    const Results results = Search(shop, parsed.boxes);
    if (!results.maps.empty()) PrintTable(results.maps);
    if (results.cause != ERROR_SUCCESS) return ReportFailure(results);
    const std::wstring found = results.maps.empty() ? L"No maps" : Counted(std::ssize(results.maps), L"map");
    PrintLine((results.maps.empty() ? L"" : L"\n") + found + L" found; " +
              Counted(results.catalogueSize, L"map") + L" in the catalogue.");
    return exitDone;
}

std::wstring Help() {
    return LR"(
search lists the maps of the map shop that meet any of the boxes, or all maps when no box is given. The edges
of a box are decimal numbers in degrees: south and north from -90 to 90, west and east from -180 to 180. A box
whose west is greater than its east crosses the 180th meridian. Of an answer that breaks off, what came is
listed; the exit code is 1 then.)";
}

std::wstring Example() {
    return L"45.8 5.9 47.9 10.5";
}

}  // namespace

const Command searchCommand = {L"search", L"[SOUTH WEST NORTH EAST]...", Help, Example, Run};
