/* Text as the database keeps it, and as it travels. */
#pragma once

#include <string>
#include <string_view>

/* The UTF-16 of a UTF-8 text. Each byte that is not part of a well-formed character (cut short, overlong, a
 * surrogate, beyond U+10FFFF) becomes U+FFFD. */
std::u16string Utf16Of(std::string_view utf8);

/* The UTF-8 of a UTF-16 text. Each surrogate that is not half of a pair becomes U+FFFD. */
std::string Utf8Of(std::u16string_view units);

/* The code points of a UTF-16 text. A surrogate that is not half of a pair is one by itself. */
std::u32string CodePointsOf(std::u16string_view units);

/* Appends a code point up to U+10FFFF; a surrogate as itself. */
void AppendUtf16(std::u16string& units, char32_t value);
