#include "files/ShownCatalogue.h"

#include "files/Files.h"
#include "files/ShownPlaces.h"

Catalogue ShownCatalogue() {
    Catalogue catalogue;
    for (const ShownText& shown : AllShownTexts()) {
        CatalogueEntry entry;
        entry.text = shown.text;
        TakePlaces(entry, shown);
        catalogue.entries.push_back(std::move(entry));
    }
    return catalogue;
}

int WriteMade(const std::string& output, const Catalogue& catalogue) {
    Complaints complaints;
    WriteCatalogue(output, catalogue, complaints);
    PrintComplaints(output, complaints);
    return complaints.empty() ? 0 : 1;
}
