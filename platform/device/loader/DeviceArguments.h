/* The arguments behind the "..." of a printf, as the device's runtime finds them: word after word.
 *
 * The compiler of the images, like this computer's, leaves a word out before 64 bits that would begin at an
 * odd one. This computer's functions leave it out, too, and would never notice; the device's read it. */
#pragma once

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>

/* The arguments that lie there. */
va_list ListOf(const uint32_t* words);

class DeviceArguments {
public:
    /* What the device's runtime reads from `arguments` when it prints by `format`. */
    template <class Unit>
    DeviceArguments(const Unit* format, va_list arguments);

    /* The same for this computer's functions, to be used as long as this object lives. */
    va_list List() const;

private:
    template <class Unit>
    const Unit* TakeDirective(const Unit* text);
    void TakeWord();
    void TakeTwoWords();

    static constexpr size_t capacity = 64;
    const uint32_t* next_;
    size_t count_ = 0;
    alignas(8) uint32_t words_[capacity];
};
