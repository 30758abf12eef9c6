#include "NumberText.h"

#include <limits>

// Not std::to_wstring: it calls vswprintf, which has other parameters on the device.
std::wstring DecimalText(int64_t number) {
    // The least number has no positive counterpart.
    auto rest = static_cast<uint64_t>(number);
    if (number < 0) rest = 0 - rest;
    std::wstring digits;
    do {
        digits.insert(digits.begin(), static_cast<wchar_t>(L'0' + rest % 10));
        rest /= 10;
    } while (rest != 0);
    return number < 0 ? L"-" + digits : digits;
}

std::wstring GroupedDigits(int64_t number) {
    std::wstring digits = DecimalText(number);
    const size_t sign = number < 0 ? 1U : 0U;
    for (size_t end = digits.size(); end > sign + 3; end -= 3)
        digits.insert(end - 3, L",");
    return digits;
}

std::wstring BytesText(int64_t bytes) {
    return GroupedDigits(bytes) + (bytes == 1 ? L" byte" : L" bytes");
}

std::optional<int64_t> ParseCount(const std::wstring& text) {
    if (text.empty()) return std::nullopt;
    int64_t number = 0;
    for (const wchar_t character : text) {
        if (character < L'0' || character > L'9') return std::nullopt;
        const int64_t digit = character - L'0';
        if (number > (std::numeric_limits<int64_t>::max() - digit) / 10) return std::nullopt;
        number = number * 10 + digit;
    }
    return number;
}
