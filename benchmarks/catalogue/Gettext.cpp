/* gettext of the C library, with a catalogue made by msgfmt. It does not know of ornaments. Here it is used
 * by an application that does what the library does: it asks for the whole text, and when there is no
 * translation for the text without its ornaments. "gettext, once" is an application that needs only one of
 * these. */
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
    // NOLINTNEXTLINE(cert-env33-c): the command is of this program's own words
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

/* Asks for the text without its ornaments. */
const char* Stripped(const std::string& text) {
    return dgettext(domain, WithoutOrnaments(text).c_str());
}

/* Asks for the whole text, which gettext gives back when it has no translation. */
const char* Whole(const std::string& text) {
    return dgettext(domain, text.c_str());
}

/* Asks for the whole text first. */
const char* WholeOrStripped(const std::string& text) {
    const char* const translated = dgettext(domain, text.c_str());
    if (translated != text.c_str() || text.find_first_of("&.:\"") == std::string::npos) return translated;
    const std::string plain = WithoutOrnaments(text);
    const char* const found = dgettext(domain, plain.c_str());
    return found != plain.c_str() ? found : text.c_str();
}

template <Question question, const char* (*translated)(const std::string&)>
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
            outcome.append(translated(text)).append(1, '\0');
        return outcome;
    }

    void Do() override {
        unsigned units = 0;
        for (const std::string& text : texts)
            units += static_cast<unsigned char>(*translated(text));
        total = total + units;
    }

private:
    std::vector<std::string> texts;
    volatile unsigned total = 0;
};

const Enter exact(lookupExact, "gettext", MakeWork<Lookup<Question::exact, Whole>>);
const Enter pointer(lookupPointer, "gettext", MakeWork<Lookup<Question::exact, Whole>>);
const Enter stripped(lookupStripped, "gettext", MakeWork<Lookup<Question::stripped, WholeOrStripped>>);
const Enter strippedOnce(lookupStripped, "gettext, once", MakeWork<Lookup<Question::stripped, Stripped>>);
const Enter miss(lookupMiss, "gettext", MakeWork<Lookup<Question::miss, WholeOrStripped>>);
const Enter missOnce(lookupMiss, "gettext, once", MakeWork<Lookup<Question::miss, Whole>>);

}  // namespace
