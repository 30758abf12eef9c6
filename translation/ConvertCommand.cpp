/* convert: a translation in another form. */
#include "CommandLine.h"
#include "Commands.h"
#include "files/Files.h"
#include "files/ShownPlaces.h"

int RunConvert(Arguments arguments) {
    const CommandLine line = ReadCommandLine("convert IN OUT", {2, 2}, {}, arguments);
    const std::string& in = line.files[0];
    const std::string& out = line.files[1];
    FormToWrite(out);
    Complaints complaints;
    Catalogue catalogue = ReadCatalogue(in, complaints);
    TakePlacesOfThisVersion(catalogue);
    WriteCatalogue(out, catalogue, complaints);
    PrintMistakesOrWarnings(in, complaints, catalogue.losses);
    return complaints.empty() ? 0 : 1;
}
