#include "AccountText.h"

#include <locale.h>
#include <wctype.h>

#include <algorithm>
#include <stdexcept>

#include "Utf16.h"

namespace {

constexpr size_t longestAddress = 254;
constexpr size_t longestMailbox = 64;
constexpr size_t longestLabel = 63;

locale_t LettersOfAllScripts() {
    static const locale_t letters = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (letters == nullptr) throw std::runtime_error("the system has no locale C.UTF-8");
    return letters;
}

/* Whether the character is beyond ASCII and no control character, space or surrogate. */
bool IsForeign(char32_t value) {
    return value > 0xA0 && value != 0x3000 && (value < 0xD800 || value > 0xDFFF);
}

bool IsLetterOrDigit(char32_t value) {
    return (value >= U'0' && value <= U'9') || (value >= U'A' && value <= U'Z') ||
           (value >= U'a' && value <= U'z') || IsForeign(value);
}

bool IsOfMailbox(char32_t value) {
    constexpr std::u32string_view marks = U"!#$%&'*+-./=?^_`{|}~";
    return IsLetterOrDigit(value) || marks.find(value) != std::u32string_view::npos;
}

bool IsLabel(std::u32string_view label) {
    return !label.empty() && label.size() <= longestLabel && label.front() != U'-' && label.back() != U'-' &&
           std::all_of(label.begin(), label.end(),
                       [](char32_t value) { return value == U'-' || IsLetterOrDigit(value); });
}

bool IsHost(std::u32string_view host) {
    size_t dot = host.find(U'.');
    if (dot == std::u32string_view::npos) return false;
    for (; dot != std::u32string_view::npos; dot = host.find(U'.')) {
        if (!IsLabel(host.substr(0, dot))) return false;
        host.remove_prefix(dot + 1);
    }
    return IsLabel(host);
}

}  // namespace

std::u16string_view Trimmed(std::u16string_view text) {
    constexpr std::u16string_view blanks = u" \t\r\n";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::u16string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::u16string CaseFolded(std::u16string_view text) {
    const locale_t letters = LettersOfAllScripts();
    std::u16string folded;
    folded.reserve(text.size());
    // The small letter of its capital: some letters, like the two small sigmas, have their capital in common.
    for (const char32_t value : CodePointsOf(text)) {
        const wint_t capital = towupper_l(static_cast<wint_t>(value), letters);
        AppendUtf16(folded, static_cast<char32_t>(towlower_l(capital, letters)));
    }
    return folded;
}

bool IsEmailAddress(std::u16string_view text) {
    if (text.size() > longestAddress) return false;
    const std::u32string address = CodePointsOf(text);
    const size_t at = address.find(U'@');
    if (at == std::u32string::npos || at == 0 || at > longestMailbox) return false;
    const std::u32string_view mailbox(address.data(), at);
    return std::all_of(mailbox.begin(), mailbox.end(), IsOfMailbox) &&
           IsHost(std::u32string_view(address).substr(at + 1));
}
