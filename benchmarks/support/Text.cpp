#include "support/Text.h"

#include <array>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

constexpr std::array<std::string_view, 96> english = {
    "open",    "map",         "of",         "the",      "download", "account",   "sign",     "in",
    "to",      "your",        "password",   "e-mail",   "address",  "route",     "position", "north",
    "south",   "east",        "west",       "city",     "country",  "street",    "place",    "search",
    "results", "settings",    "connection", "failed",   "again",    "later",     "please",   "enter",
    "name",    "user",        "new",        "create",   "delete",   "file",      "folder",   "memory",
    "card",    "storage",     "not",        "enough",   "space",    "available", "update",   "version",
    "licence", "expired",     "buy",        "shop",     "price",    "free",      "trial",    "days",
    "left",    "topographic", "road",       "hiking",   "cycling",  "scale",     "detail",   "region",
    "island",  "mountain",    "river",      "lake",     "coast",    "border",    "zoom",     "view",
    "show",    "hide",        "all",        "none",     "select",   "cancel",    "is",       "and",
    "or",      "with",        "for",        "from",     "could",    "be",        "saved",    "loaded",
    "tracks",  "waypoint",    "compass",    "altitude", "speed",    "distance",  "language", "about"};

constexpr std::array<std::string_view, 64> french = {
    "ouvrir",   "carte",     "de",         "la",        "télécharger", "compte",      "connexion",
    "dans",     "à",         "votre",      "mot",       "passe",       "adresse",     "itinéraire",
    "position", "nord",      "sud",        "est",       "ouest",       "ville",       "pays",
    "rue",      "lieu",      "recherche",  "résultats", "réglages",    "échec",       "encore",
    "plus",     "tard",      "veuillez",   "saisir",    "nom",         "utilisateur", "nouveau",
    "créer",    "supprimer", "fichier",    "dossier",   "mémoire",     "stockage",    "pas",
    "assez",    "espace",    "disponible", "mise",      "jour",        "version",     "licence",
    "expirée",  "acheter",   "boutique",   "prix",      "gratuit",     "essai",       "jours",
    "restants", "route",     "randonnée",  "échelle",   "détail",      "région",      "île",
    "montagne"};

void AppendUtf8(std::string& text, char16_t unit) {
    if (unit < 0x80) {
        text += static_cast<char>(unit);
    } else if (unit < 0x800) {
        text += static_cast<char>(0xC0 | unit >> 6);
        text += static_cast<char>(0x80 | (unit & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | unit >> 12);
        text += static_cast<char>(0x80 | (unit >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (unit & 0x3F));
    }
}

}  // namespace

std::string_view EnglishWord(Random& random) {
    return english.at(random.Below(english.size()));
}

std::string_view FrenchWord(Random& random) {
    return french.at(random.Below(french.size()));
}

std::string SomeWords(Random& random, size_t least, size_t most) {
    const size_t wanted = random.Between(least, most);
    std::string text(EnglishWord(random));
    while (text.size() < wanted)
        text.append(" ").append(EnglishWord(random));
    text.resize(wanted);
    if (text.back() == ' ') text.back() = 's';
    return text;
}

std::u16string ToUtf16(std::string_view text) {
    std::u16string wide;
    for (size_t i = 0; i < text.size(); ++i) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const int further = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : 2;
        unsigned unit = further == 0 ? lead : further == 1 ? lead & 0x1F : lead & 0x0F;
        for (int j = 0; j < further; ++j)
            unit = unit << 6 | (static_cast<unsigned char>(text[++i]) & 0x3F);
        wide += static_cast<char16_t>(unit);
    }
    return wide;
}

std::string ToUtf8(std::u16string_view text) {
    std::string narrow;
    for (const char16_t unit : text)
        AppendUtf8(narrow, unit);
    return narrow;
}

void WriteFile(const std::string& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path);
}

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
