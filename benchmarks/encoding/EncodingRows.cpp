#include "encoding/EncodingRows.h"

#include <cctype>

#include "support/Random.h"

namespace {

constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
constexpr std::string_view passing = "-._";
constexpr std::string_view escaped = "/:@&,?=#%+;";
constexpr std::string_view digits = "0123456789abcdef";

std::string_view SomeKind(Random& random) {
    const size_t kind = random.Below(24);
    if (kind < 16) return letters;
    if (kind < 19) return " ";
    return kind < 21 ? passing : escaped;
}

}  // namespace

std::string PlainText(size_t size) {
    Random random(size);
    std::string text;
    while (text.size() < size) {
        const std::string_view kind = SomeKind(random);
        text += kind[random.Below(kind.size())];
    }
    return text;
}

std::string EncodedText(size_t size, std::string_view space) {
    std::string encoded;
    for (const char letter : PlainText(size)) {
        const auto byte = static_cast<unsigned char>(letter);
        if (letter == ' ') {
            encoded += space;
        } else if (escaped.find(letter) == std::string_view::npos) {
            encoded += letter;
        } else {
            encoded.append(1, '%').append(1, digits[byte >> 4]).append(1, digits[byte & 0x0F]);
        }
    }
    return encoded;
}

std::string Normalised(const std::string& encoded) {
    std::string normal;
    for (size_t i = 0; i < encoded.size(); ++i) {
        if (encoded[i] != '%') {
            normal += encoded[i];
            continue;
        }
        const std::string escape = {'%', encoded.at(i + 1), static_cast<char>(tolower(encoded.at(i + 2)))};
        normal += escape == "%20" ? "+" : escape;
        i += 2;
    }
    return normal;
}
