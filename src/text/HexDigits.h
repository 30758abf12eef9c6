/* Hexadecimal digits in wide text. */
#pragma once

#include "text/WideString.h"

/* The digit for `number`, 0 to 15, lower case. */
constexpr WCHAR HexDigit(unsigned number) {
    return TEXT("0123456789abcdef")[number];
}

/* 0 to 15 for 0-9, A-F and a-f; -1 for any other unit. */
int HexDigitValue(WCHAR unit);

/* Adds `number` to the end of `text` as two digits, lower case. */
void AppendHexByte(WideString& text, uint8_t number);
