/* merge: a translation carried to a new version, or harvests joined. */
#include <algorithm>
#include <cstdio>
#include <set>

#include "CommandLine.h"
#include "Commands.h"
#include "Merge.h"
#include "files/Files.h"
#include "files/Quoted.h"
#include "files/ShownPlaces.h"

namespace {

bool HasAllShownTexts(const Catalogue& catalogue) {
    std::set<WideStringView> texts;
    for (const CatalogueEntry& entry : catalogue.entries) {
        if (!entry.isObsolete) texts.insert(entry.text);
    }
    return std::ranges::all_of(AllShownTexts(),
                               [&](const ShownText& shown) { return texts.contains(shown.text); });
}

/* How many texts of `old` are in use there, and not in `merged`. */
ptrdiff_t CountThatBecameObsolete(const Catalogue& old, const Catalogue& merged) {
    std::set<WideStringView> obsolete;
    for (const CatalogueEntry& entry : merged.entries) {
        if (entry.isObsolete) obsolete.insert(entry.text);
    }
    return std::ranges::count_if(old.entries, [&](const CatalogueEntry& entry) {
        return !entry.isObsolete && obsolete.contains(entry.text);
    });
}

/* Mistakes of `path` are told; what cannot be written as `output` is one. */
Catalogue Read(const std::string& path, const std::string& output, bool& isWell) {
    Complaints complaints;
    Catalogue catalogue = ReadCatalogue(path, complaints);
    TakePlacesOfThisVersion(catalogue);
    CheckCatalogue(output, catalogue, complaints);
    PrintMistakesOrWarnings(path, complaints, catalogue.losses);
    isWell = isWell && complaints.empty();
    return catalogue;
}

}  // namespace

int RunMerge(Arguments arguments) {
    const CommandLine line =
        ReadCommandLine("merge OLD NEW [--output FILE]", {2, 2}, {"--output"}, arguments);
    const std::string output = line.Value("--output", "-");
    FormToWrite(output);
    bool isWell = true;
    const Catalogue old = Read(line.files[0], output, isWell);
    Catalogue fresh = Read(line.files[1], output, isWell);
    if (!isWell) return 1;
    std::vector<MergeConflict> conflicts;
    const bool isWhole = HasAllShownTexts(fresh);
    const Catalogue merged = Merge(old, std::move(fresh), isWhole, conflicts);
    Complaints none;
    WriteCatalogue(output, merged, none);
    for (const MergeConflict& conflict : conflicts) {
        std::fprintf(stderr, "%s:%zu: note: line %zu of '%s' translates %s otherwise, and counts\n",
                     line.files[0].c_str(), conflict.oldLine, conflict.newLine, line.files[1].c_str(),
                     Quoted(conflict.text).c_str());
    }
    if (const ptrdiff_t count = CountThatBecameObsolete(old, merged); count > 0) {
        std::fprintf(stderr, "%s: note: texts that are obsolete now, as '%s' has them no more: %td\n",
                     line.files[0].c_str(), line.files[1].c_str(), count);
    }
    return 0;
}
