/* TranslationCatalogue. */
#include "ui/TranslationCatalogue.h"

#include "catalogue/CatalogueRows.h"
#include "support/Text.h"

namespace {

enum class Encoding { utf16, units8 };

std::string LanguageFile(const std::vector<Translation>& table, Encoding encoding) {
    std::u16string units;
    for (const auto& [text, translation] : table)
        units += ToUtf16(text + "\t" + WithEscapes(translation) + "\r\n");
    std::string bytes = encoding == Encoding::utf16 ? "\xFF\xFE" : "";
    for (const char16_t unit : units) {
        bytes += static_cast<char>(unit);
        if (encoding == Encoding::utf16) bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

template <Encoding encoding>
class Loading final : public Work {
public:
    explicit Loading(size_t size) : texts(SomeTranslations(size)) {
        WriteFile(workFolder + "/library.txt", LanguageFile(texts, encoding));
    }

    std::string Outcome() override {
        TranslationCatalogue catalogue;
        catalogue.LoadTranslationFile(path);
        std::string outcome;
        for (const auto& [text, translation] : texts)
            outcome.append(ToUtf8(catalogue.Translate(ToUtf16(text)))).append(1, '\0');
        return outcome;
    }

    void Do() override {
        TranslationCatalogue catalogue;
        catalogue.LoadTranslationFile(path);
    }

private:
    std::vector<Translation> texts;
    WideString path = ToUtf16(workFolder + "/library.txt");
};

template <Question question, bool isPointer>
class Lookup final : public Work {
public:
    explicit Lookup(size_t size) {
        const std::vector<Translation> table = SomeTranslations(size);
        WriteFile(workFolder + "/library.txt", LanguageFile(table, Encoding::utf16));
        catalogue.LoadTranslationFile(ToUtf16(workFolder + "/library.txt"));
        for (const std::string& text : Questions(table, question))
            texts.push_back(ToUtf16(text));
    }

    std::string Outcome() override {
        std::string outcome;
        for (const WideString& text : texts)
            outcome.append(ToUtf8(Translated(text))).append(1, '\0');
        return outcome;
    }

    void Do() override {
        unsigned units = 0;
        for (const WideString& text : texts)
            units += Translated(text)[0];
        total = total + units;
    }

private:
    const WideString& Translated(const WideString& text) {
        if constexpr (isPointer)
            return catalogue.Translate(text.c_str());
        else
            return catalogue.Translate(text);
    }

    TranslationCatalogue catalogue;
    std::vector<WideString> texts;
    volatile unsigned total = 0;
};

const Enter loading(translationLoad, ownName, MakeWork<Loading<Encoding::utf16>>);
const Enter loading8Bit(translationLoad8Bit, ownName, MakeWork<Loading<Encoding::units8>>);
const Enter exact(lookupExact, ownName, MakeWork<Lookup<Question::exact, false>>);
const Enter pointer(lookupPointer, ownName, MakeWork<Lookup<Question::exact, true>>);
const Enter stripped(lookupStripped, ownName, MakeWork<Lookup<Question::stripped, false>>);
const Enter miss(lookupMiss, ownName, MakeWork<Lookup<Question::miss, false>>);

}  // namespace
