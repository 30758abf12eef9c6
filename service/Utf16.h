/* Text as the catalogue keeps it, and as it travels. */
#pragma once

#include <string>
#include <string_view>

/* The UTF-16 of a UTF-8 text. Each byte that is not part of a well-formed character (cut short, overlong, a
 * surrogate, beyond U+10FFFF) becomes U+FFFD. */
std::u16string Utf16Of(std::string_view utf8);
