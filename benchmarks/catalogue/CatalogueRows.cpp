#include "catalogue/CatalogueRows.h"

#include <cctype>
#include <set>
#include <string_view>

#include "support/Text.h"

namespace {

constexpr std::string_view ornaments = "&.:\"";
constexpr size_t untranslated = 100;

/* Half of the texts are labels of a word or three, the others sentences. */
std::string SomeText(Random& random) {
    const bool isLabel = random.Below(2) == 0;
    const size_t words = isLabel ? random.Between(1, 4) : random.Between(4, 14);
    std::string text(EnglishWord(random));
    for (size_t i = 1; i < words; ++i)
        text.append(" ").append(EnglishWord(random));
    text[0] = static_cast<char>(toupper(text[0]));
    if (!isLabel) text += random.Below(4) == 0 ? ":" : ".";
    return text;
}

std::string SomeTranslation(Random& random, const std::string& text, bool hasTwoLines) {
    std::string translation(FrenchWord(random));
    while (translation.size() < text.size())
        translation.append(" ").append(FrenchWord(random));
    if (hasTwoLines) translation.append("\n").append(FrenchWord(random));
    if (!isalpha(static_cast<unsigned char>(text.back()))) translation += text.back();
    return translation;
}

std::string WithOrnament(Random& random, const std::string& text) {
    switch (random.Below(4)) {
        case 0:
            return "&" + text;
        case 1:
            return text + ":";
        case 2:
            return text + "...";
        default:
            return "&" + text + "...";
    }
}

void Shuffle(Random& random, std::vector<std::string>& texts) {
    for (size_t i = texts.size(); i > 1; --i)
        texts[i - 1].swap(texts[random.Below(i)]);
}

}  // namespace

std::vector<Translation> SomeTranslations(size_t count) {
    Random random(count);
    std::vector<Translation> table;
    for (std::set<std::string> known; table.size() < count;) {
        std::string text = SomeText(random);
        if (!known.insert(text).second) continue;
        std::string translation = SomeTranslation(random, text, table.size() % 16 == 15);
        table.push_back({std::move(text), std::move(translation)});
    }
    return table;
}

std::vector<std::string> Questions(const std::vector<Translation>& table, Question question) {
    Random random(1);
    std::vector<std::string> texts;
    while (texts.size() < table.size()) {
        for (const auto& [text, translation] : table) {
            const bool isPlain = text.find_first_of(ornaments) == std::string::npos;
            if (question == Question::exact) {
                texts.push_back(text);
            } else if (question == Question::miss) {
                // Few texts of a program have no translation, and these come again and again.
                const std::string& known = table[texts.size() % untranslated].text;
                texts.push_back(known.substr(0, known.size() / 2) + "q" + known.substr(known.size() / 2));
            } else if (isPlain && texts.size() < table.size()) {
                texts.push_back(WithOrnament(random, text));
            }
        }
    }
    Shuffle(random, texts);
    return texts;
}

std::string WithEscapes(const std::string& text) {
    std::string escaped;
    for (const char letter : text) {
        if (letter == '\n') {
            escaped += "\\n";
        } else {
            escaped += letter;
        }
    }
    return escaped;
}
