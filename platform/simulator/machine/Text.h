/* Text for the journal, empty while that is not written, and for names that are compared without case. */
#pragma once

#include "Platform.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace simulator {

/* In quotes, units outside of U+0020 to U+007E as <U+000A>; the null pointer as null. */
std::string Quoted(std::u16string_view text);
std::string Quoted(const WCHAR* text);

/* 0x and eight upper-case digits. */
std::string Hex8(uint32_t value);

/* 0x and as many upper-case digits as it takes. */
std::string Hex(uint64_t value);

/* Pointers that have no name of their own: null or their value. */
std::string PointerText(const void* pointer);

/* "size ok" for a structure's own size, otherwise "size 12". */
std::string SizeText(size_t size, size_t own);

/* The form in which names are compared: every unit in lower case. */
std::u16string Folded(std::u16string_view text);

/* UTF-8; a surrogate that stands alone becomes three bytes of its own, so that any name survives. */
std::string ToUtf8(std::u16string_view text);
std::u16string FromUtf8(std::string_view bytes);

/* The text at a pointer that may be null. */
inline std::u16string TextOrEmpty(const WCHAR* text) {
    return text != nullptr ? std::u16string(text) : u"";
}

}  // namespace simulator
