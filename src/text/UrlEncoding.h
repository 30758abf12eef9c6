/* Form encoding of single values, as key/value files and form texts hold them. Both directions work on code
 * units; no UTF-8 is made or read. */
#pragma once

#include "text/HexDigits.h"
#include "text/WideString.h"

#include <array>

/* `text` encoded, unit by unit:
 *   ASCII letters and digits                              as they are
 *   units whose low byte is one of $-_.!*'() or 0         as they are, with their high byte
 *   space                                                 +
 *   every other unit                                      %xx, its low byte in lower-case digits
 * So the high byte of most units above U+00FF is lost: U+20AC becomes %ac, while U+0100 and U+012D stay as
 * they are. The readers of key/value files depend on exactly this form. */
WideString UrlEncode(WideStringView text);

/* `text` decoded: + is a space, %xx (digits of either case) the unit 0 to 255. Bad text never fails:
 *   % and two units that are not both digits    all three as they are, and decoding goes on after them
 *   % with fewer than two units after it        dropped with what follows it */
WideString UrlDecode(WideStringView text);

/* For each low byte the greatest unit with it that UrlEncode leaves as it is; 0 when there is none. (Units
 * with the low byte 0 all pass, so that a 0 here refuses every unit of its row.) */
inline constexpr std::array<WCHAR, 0x100> greatestPassingUnits = [] {
    std::array<WCHAR, 0x100> greatest{};
    for (const WCHAR unit :
         WideStringView(TEXT("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz")))
        greatest[unit] = 0xFF;
    greatest[0] = 0xFFFF;
    for (const WCHAR mark : WideStringView(TEXT("$-_.!*'()")))
        greatest[mark] = 0xFFFF;
    return greatest;
}();

/* Calls `put` with each unit of UrlEncode(`text`), in their order. */
template <class Put>
void PutUrlEncoded(WideStringView text, Put put) {
    for (const WCHAR unit : text) {
        if (unit <= greatestPassingUnits[unit & 0xFFU]) {
            put(unit);
        } else if (unit == TEXT(' ')) {
            put(TEXT('+'));
        } else {
            put(TEXT('%'));
            put(HexDigit(unit >> 4U & 0x0FU));
            put(HexDigit(unit & 0x0FU));
        }
    }
}
