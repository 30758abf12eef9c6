#include "text/HexDigits.h"

int HexDigitValue(WCHAR unit) {
    if (unit >= '0' && unit <= '9') return unit - '0';
    if (unit >= 'a' && unit <= 'f') return unit - 'a' + 10;
    if (unit >= 'A' && unit <= 'F') return unit - 'A' + 10;
    return -1;
}

void AppendHexByte(WideString& text, uint8_t number) {
    text += HexDigit(number >> 4U);
    text += HexDigit(number & 0x0FU);
}
