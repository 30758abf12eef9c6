/* orvande-translation pseudo */
#include "CommandLine.h"
#include "Commands.h"
#include "PseudoText.h"
#include "Utf16.h"
#include "files/Quoted.h"
#include "files/ShownCatalogue.h"

int RunPseudo(Arguments arguments) {
    const CommandLine line = ReadCommandLine("pseudo [--output FILE]", {}, {"--output"}, arguments);
    Catalogue catalogue = ShownCatalogue();
    catalogue.notes.push_back(Utf16Of(NameOfVersion() + ": a language that shows what was forgotten"));
    for (CatalogueEntry& entry : catalogue.entries)
        entry.translation = PseudoText(*FindShownText(entry.text));
    return WriteMade(line.Value("--output", "-"), catalogue);
}
