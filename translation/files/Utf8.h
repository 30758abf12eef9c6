/* Bytes of files that may be UTF-8. */
#pragma once

#include <string_view>

/* The byte order mark with which some editors begin a file. */
inline constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

/* Whether all of it is well-formed: nothing cut short, overlong, a surrogate or beyond U+10FFFF. */
bool IsUtf8(std::string_view bytes);

bool IsAscii(std::string_view bytes);
