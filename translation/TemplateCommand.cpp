/* orvande-translation template */
#include <algorithm>

#include "CommandLine.h"
#include "Commands.h"
#include "Utf16.h"
#include "files/Files.h"
#include "files/Quoted.h"
#include "files/ShownCatalogue.h"

namespace {

/* Languages name files on the handheld. */
void CheckLanguage(const std::string& name) {
    const auto isForbidden = [](char unit) {
        return static_cast<uint8_t>(unit) < 0x20 ||
               std::string_view("\\/:*?\"<>|").find(unit) != std::string::npos;
    };
    if (std::ranges::any_of(name, isForbidden))
        throw UsageError("no file can have the name of the language '" + name +
                         "': \\ / : * ? \" < > | are not for names");
}

/* What editors and services ask a .po file for. The code of the language is for the translator to say. */
std::vector<CatalogueField> FieldsOfPo() {
    return {{u"Project-Id-Version", Utf16Of(NameOfVersion())}, {u"Language", {}}};
}

}  // namespace

int RunTemplate(Arguments arguments) {
    const CommandLine line = ReadCommandLine("template [--language NAME] [--output FILE]", {},
                                             {"--language", "--output"}, arguments);
    const std::string language = line.Value("--language", "");
    const std::string output = line.Value("--output", "-");
    CheckLanguage(language);
    Catalogue catalogue = ShownCatalogue();
    catalogue.notes.push_back(
        Utf16Of(NameOfVersion() + ": " +
                (language.empty() ? "name this file after its language, such as OrvandeOnline.French.txt"
                                  : language)));
    if (FormToWrite(output) == FileForm::Po) catalogue.fields = FieldsOfPo();
    return WriteMade(output, catalogue);
}
