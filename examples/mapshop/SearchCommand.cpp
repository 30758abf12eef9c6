#include "SearchCommand.h"

#include "Console.h"
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
    bool made = false;          // false: no memory for the search
};

Results Search(const OnlineLibrary& library, const std::vector<GeoBox>& boxes) {
    Results results;
    MapShopSearch* const search = library.mapShopSearch(boxes.data(), static_cast<int32_t>(boxes.size()));
    if (search == nullptr) return results;
    MapShopResult map;
    while (library.mapShopGetNext(search, &map) != 0)
        results.maps.push_back(map);
    results.catalogueSize = library.mapShopClose(search);
    results.made = true;
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

}  // namespace

ExitCode RunSearch(const std::vector<std::wstring>& arguments) {
    const ParsedBoxes parsed = ParseBoxes(arguments);
    if (!parsed.problem.empty()) {
        PrintError(parsed.problem);
        return exitUsage;
    }
    const OnlineLibrary library;
    if (!library.Problem().empty()) {
        PrintError(library.Problem());
        return exitLibraryFailed;
    }
    const Results results = Search(library, parsed.boxes);
    if (!results.made) {
        PrintError(L"There is not enough memory for a search.");
        return exitNoAnswer;
    }
    if (results.maps.empty() && results.catalogueSize == 0) {
        PrintError(L"No maps: the service cannot be reached, refused the search, or has none.");
        return exitNoAnswer;
    }
    if (!results.maps.empty()) PrintTable(results.maps);
    const std::wstring found = results.maps.empty() ? L"No maps" : Counted(std::ssize(results.maps), L"map");
    PrintLine((results.maps.empty() ? L"" : L"\n") + found + L" found; " +
              Counted(results.catalogueSize, L"map") + L" in the catalogue.");
    return exitDone;
}
