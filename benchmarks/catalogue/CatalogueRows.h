/* Rows of the translation catalogue; `size` is the number of English texts that have a translation.
 *
 * "translation-load", "translation-load-8bit": a file of texts and translations is read into a table by text,
 * and the table is freed again. The library's file is UTF-16LE, or of 8-bit units; the peer's is UTF-8.
 *
 * "lookup-exact", "lookup-pointer", "lookup-stripped", "lookup-miss": `size` texts are translated one after
 * the other, in an order without pattern: those of the table; the same, handed over as a pointer; those of
 * the table that hold no ornament (& . : or double quote), with one added; a hundred texts that have no
 * translation, again and again, half of them with an ornament. Each contender gets its texts in its own
 * encoding. */
#pragma once

#include <string>
#include <vector>

#include "support/Rows.h"
#include "support/Sizes.h"

inline constexpr Row translationLoad{"translation-load", "text", catalogueSizes, growthSizes};
inline constexpr Row translationLoad8Bit{"translation-load-8bit", "text", catalogueSizes, {}};
inline constexpr Row lookupExact{"lookup-exact", "lookup", catalogueSizes, growthSizes};
inline constexpr Row lookupPointer{"lookup-pointer", "lookup", catalogueSizes, {}};
inline constexpr Row lookupStripped{"lookup-stripped", "lookup", catalogueSizes, {}};
inline constexpr Row lookupMiss{"lookup-miss", "lookup", catalogueSizes, {}};

/* UTF-8. */
struct Translation {
    std::string text;
    std::string translation;
};

/* Texts as a user interface has them, no two alike, half of them without an ornament. One translation in 16
 * has two lines. */
std::vector<Translation> SomeTranslations(size_t count);

enum class Question { exact, stripped, miss };

/* `count` texts to be looked up, in a fixed order without pattern. */
std::vector<std::string> Questions(const std::vector<Translation>& table, Question question);

/* A translation as a file of lines has it: a line feed in it is written as \n. */
std::string WithEscapes(const std::string& text);
