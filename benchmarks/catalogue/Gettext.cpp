/* gettext of the C library, with a catalogue made by msgfmt. An ornamented text is stripped by hand before,
 * as an application whose catalogue holds plain texts does; the plain text is not tried first. */
#include <libintl.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "catalogue/CatalogueRows.h"
#include "support/Text.h"

namespace {

constexpr const char* domain = "orvande";

std::string PoFile(const std::vector<Translation>& table) {
    std::string file = "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n";
    for (const auto& [text, translation] : table)
        file.append("\nmsgid \"" + text + "\"\nmsgstr \"" + WithEscapes(translation) + "\"\n");
    return file;
}

void UseCatalogue(const std::vector<Translation>& table) {
    const std::string folder = workFolder + "/xx/LC_MESSAGES";
    const std::string source = workFolder + "/" + domain + ".po";
    std::filesystem::create_directories(folder);
    WriteFile(source, PoFile(table));
    const std::string command = "msgfmt -o '" + folder + "/" + domain + ".mo' '" + source + "'";
    if (std::system(command.c_str()) != 0) throw std::runtime_error("msgfmt has failed");
    setenv("LANGUAGE", "xx", 1);
    if (setlocale(LC_ALL, "C.UTF-8") == nullptr) throw std::runtime_error("there is no locale C.UTF-8");
    bindtextdomain(domain, workFolder.c_str());
}

std::string WithoutOrnaments(const std::string& text) {
    std::string plain;
    plain.reserve(text.size());
    for (const char letter : text) {
        if (letter != '&' && letter != '.' && letter != ':' && letter != '"') plain += letter;
    }
    return plain;
}

template <Question question>
class Lookup final : public Work {
public:
    explicit Lookup(size_t size) {
        const std::vector<Translation> table = SomeTranslations(size);
        UseCatalogue(table);
        texts = Questions(table, question);
    }

    std::string Outcome() override {
        std::string outcome;
        for (const std::string& text : texts)
            outcome.append(Translated(text)).append(1, '\0');
        return outcome;
    }

    void Do() override {
        unsigned units = 0;
        for (const std::string& text : texts)
            units += static_cast<unsigned char>(*Translated(text));
        total = total + units;
    }

private:
    static const char* Translated(const std::string& text) {
        if constexpr (question == Question::stripped)
            return dgettext(domain, WithoutOrnaments(text).c_str());
        else
            return dgettext(domain, text.c_str());
    }

    std::vector<std::string> texts;
    volatile unsigned total = 0;
};

const Enter exact(lookupExact, "gettext", MakeWork<Lookup<Question::exact>>);
const Enter pointer(lookupPointer, "gettext", MakeWork<Lookup<Question::exact>>);
const Enter stripped(lookupStripped, "gettext", MakeWork<Lookup<Question::stripped>>);
const Enter miss(lookupMiss, "gettext", MakeWork<Lookup<Question::miss>>);

}  // namespace
