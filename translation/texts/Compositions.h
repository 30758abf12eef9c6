/* Accents that are characters of their own, behind their letter, as the editors of some systems write them. A
 * handheld draws such an accent beside the letter. */
#pragma once

#include "text/WideString.h"

#include <span>

struct Composition {
    WCHAR letter;
    WCHAR accent;
    WCHAR both; /* the one character */
};

/* All that Unicode has, ordered by letter and accent; find_compositions.py tells the build. */
std::span<const Composition> AllCompositions();

/* Whether `unit` is such an accent: U+0300 to U+036F. */
bool IsAccent(WCHAR unit);

/* `text` with a letter and its accents as one character, wherever there is one. */
WideString ComposedText(WideStringView text);
