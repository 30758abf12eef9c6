#include "PseudoText.h"

#include <algorithm>

#include "check/FoundPlaceholders.h"
#include "check/Mentions.h"

namespace {

constexpr WideStringView plainLetters = u"AaCcDEeIiNnOoUuYy";
constexpr WideStringView accentedLetters =
    u"\u00C0\u00E5\u00C7\u00E7\u00D0\u00C9\u00E9\u00CE\u00EE\u00D1\u00F1\u00D6\u00F6\u00DC\u00FC\u00DD\u00FD";
static_assert(plainLetters.size() == accentedLetters.size());

constexpr size_t addedOfHundred = 40;
constexpr size_t brackets = 2;

WCHAR Accented(WCHAR unit) {
    const size_t at = plainLetters.find(unit);
    return at == WideStringView::npos ? unit : accentedLetters[at];
}

bool IsVowel(WCHAR unit) {
    return WideStringView(u"aeiouAEIOU").find(unit) != WideStringView::npos;
}

class PseudoWriter {
public:
    explicit PseudoWriter(WideStringView whole)
        : text(whole), wanted(std::max((whole.size() * addedOfHundred + 99) / 100, brackets) - brackets) {}

    /* Goes on to `position`, with what is to be accented. */
    void AccentUntil(size_t position) {
        for (; at < position; ++at) {
            made += Accented(text[at]);
            // Evenly, so that every line grows.
            if (!IsVowel(text[at])) continue;
            for (const size_t due = wanted * (at + 1) / text.size(); added < due; ++added)
                made += Accented(text[at]);
        }
    }

    /* Passes over `length` units, in whose place `other` stands. */
    void Put(size_t length, WideStringView other) {
        made.append(other);
        at += length;
        added = std::max(added, wanted * at / text.size());
    }

    [[nodiscard]] WideString Made() {
        AccentUntil(text.size());
        if (added < wanted) made.append(wanted - added, u'\u00E9');
        return u"[" + made + u"]";
    }

private:
    WideStringView text;
    size_t wanted; /* how many letters are to be added, */
    size_t added = 0;
    size_t at = 0;
    WideString made;
};

}  // namespace

WideString PseudoText(const ShownText& shown) {
    const WideStringView text = shown.text;
    PseudoWriter writer(text);
    if (shown.isFormat) {
        for (const WideStringView placeholder : FindPlaceholders(text)) {
            writer.AccentUntil(static_cast<size_t>(placeholder.data() - text.data()));
            writer.Put(placeholder.size(), placeholder);
        }
        return writer.Made();
    }
    for (const Mention& mention : FindMentions(text)) {
        writer.AccentUntil(mention.begin);
        writer.Put(WideStringView(mention.name->text).size(), PseudoText(*mention.name));
    }
    return writer.Made();
}
