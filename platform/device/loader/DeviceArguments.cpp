#include "Platform.h"

#include "DeviceArguments.h"

#include <cstring>
#include <string_view>

#include "machine/Violations.h"

namespace {

template <class Unit>
bool IsOneOf(Unit unit, std::string_view letters) {
    return unit != 0 && unit < 0x80 && letters.find(static_cast<char>(unit)) != std::string_view::npos;
}

/* A list of arguments is the address of the next one. */
const uint32_t* Begin(va_list arguments) {
    const uint32_t* words;
    static_assert(sizeof words == sizeof(va_list));
    std::memcpy(&words, &arguments, sizeof words);
    return words;
}

}  // namespace

va_list ListOf(const uint32_t* words) {
    va_list list;
    std::memcpy(&list, &words, sizeof list);
    return list;
}

template <class Unit>
DeviceArguments::DeviceArguments(const Unit* format, va_list arguments) : next_(Begin(arguments)) {
    while (*format != 0)
        format = *format == '%' ? TakeDirective(format + 1) : format + 1;
}

template DeviceArguments::DeviceArguments(const char* format, va_list arguments);
template DeviceArguments::DeviceArguments(const WCHAR* format, va_list arguments);

va_list DeviceArguments::List() const {
    return ListOf(words_);
}

/* Takes what a directive reads, whose % `text` follows; the text behind it. */
template <class Unit>
const Unit* DeviceArguments::TakeDirective(const Unit* text) {
    for (; IsOneOf(*text, "-+ #0123456789.*"); ++text) {
        if (*text == '*') TakeWord();
    }
    bool isWide = false;
    for (; IsOneOf(*text, "hlwLI"); ++text) {
        const bool isSixtyFour = text[0] == 'I' && text[1] == '6' && text[2] == '4';
        isWide = isWide || isSixtyFour || (text[0] == 'l' && text[1] == 'l');
        if (isSixtyFour || (text[0] == 'I' && text[1] == '3' && text[2] == '2')) text += 2;
    }
    if (*text == 0) return text;
    if (IsOneOf(*text, "eEfgGaA") || (isWide && IsOneOf(*text, "diuoxX"))) {
        TakeTwoWords();
    } else if (IsOneOf(*text, "diuoxXpcCsSn")) {
        TakeWord();
    }
    return text + 1;
}

void DeviceArguments::TakeWord() {
    if (count_ == capacity) return simulator::Violate("a format reads more arguments than any has");
    words_[count_++] = *next_++;
}

void DeviceArguments::TakeTwoWords() {
    if (count_ % 2 == 1) ++count_;
    TakeWord();
    TakeWord();
}
