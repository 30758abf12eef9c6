#include "Platform.h"

#include "machine/Text.h"

#include <locale.h>
#include <wctype.h>

#include <cstdio>

#include "machine/Journal.h"

namespace simulator {

namespace {

bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

void AppendUtf8(std::string& bytes, uint32_t code) {
    const auto continuation = [&](int shift) { bytes += static_cast<char>(0x80 | ((code >> shift) & 0x3F)); };
    if (code < 0x80) {
        bytes += static_cast<char>(code);
    } else if (code < 0x800) {
        bytes += static_cast<char>(0xC0 | (code >> 6));
        continuation(0);
    } else if (code < 0x10000) {
        bytes += static_cast<char>(0xE0 | (code >> 12));
        continuation(6);
        continuation(0);
    } else {
        bytes += static_cast<char>(0xF0 | (code >> 18));
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

void AppendUtf16(std::u16string& text, uint32_t code) {
    if (code < 0x10000) {
        text += static_cast<char16_t>(code);
        return;
    }
    text += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
    text += static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
}

bool IsWanted() {
    return Journal::Current().IsWritten();
}

std::string Formatted(const char* prefix, int digits, uint64_t value) {
    if (!IsWanted()) return {};
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%s%0*llX", prefix, digits, static_cast<unsigned long long>(value));
    return buffer;
}

}  // namespace

std::string Quoted(std::u16string_view text) {
    if (!IsWanted()) return {};
    std::string quoted = "\"";
    for (const char16_t unit : text) {
        if (unit >= 0x20 && unit <= 0x7E) {
            quoted += static_cast<char>(unit);
        } else {
            quoted += Formatted("<U+", 4, unit) + ">";
        }
    }
    return quoted + "\"";
}

std::string Quoted(const WCHAR* text) {
    if (!IsWanted()) return {};
    return text != nullptr ? Quoted(std::u16string_view(text)) : std::string("null");
}

std::string Hex8(uint32_t value) {
    return Formatted("0x", 8, value);
}

std::string Hex(uint64_t value) {
    return Formatted("0x", 1, value);
}

std::string PointerText(const void* pointer) {
    return pointer != nullptr ? Hex(reinterpret_cast<uintptr_t>(pointer)) : std::string("null");
}

std::string SizeText(size_t size, size_t own) {
    return size == own ? "size ok" : "size " + std::to_string(size);
}

std::u16string Folded(std::u16string_view text) {
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    std::u16string folded(text);
    for (char16_t& unit : folded) {
        const wint_t lower = unicode != nullptr ? towlower_l(unit, unicode) : towlower(unit);
        if (lower < 0x10000) unit = static_cast<char16_t>(lower);
    }
    return folded;
}

std::string ToUtf8(std::u16string_view text) {
    std::string bytes;
    for (size_t i = 0; i < text.size(); ++i) {
        uint32_t code = text[i];
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            code = 0x10000 + ((code - 0xD800) << 10) + (text[++i] - 0xDC00U);
        }
        AppendUtf8(bytes, code);
    }
    return bytes;
}

std::u16string FromUtf8(std::string_view bytes) {
    std::u16string text;
    for (size_t i = 0; i < bytes.size();) {
        const auto first = static_cast<unsigned char>(bytes[i++]);
        const int continuations = first < 0xC0 ? 0 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
        uint32_t code = continuations == 0 ? first : first & (0x3FU >> continuations);
        for (int k = 0; k < continuations && i < bytes.size(); ++k) {
            code = (code << 6) | (static_cast<unsigned char>(bytes[i++]) & 0x3FU);
        }
        AppendUtf16(text, code);
    }
    return text;
}

}  // namespace simulator
