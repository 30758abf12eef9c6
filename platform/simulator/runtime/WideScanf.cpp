/* The wide scanf of the device's runtime, for integers and words. The host's runtime stops at the largest
 * number; the device's wraps, so the digits are read here. */
#include "Platform.h"

#include <climits>
#include <cstdint>
#include <string>

#include "machine/Allocations.h"
#include "machine/Text.h"
#include "machine/Violations.h"

namespace {

bool IsSpace(char16_t unit) {
    return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
}

int DigitValue(char16_t unit) {
    if (unit >= u'0' && unit <= u'9') return unit - u'0';
    if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
    if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
    return INT_MAX;
}

enum class Size { Short, Long, SixtyFour };

struct Field {
    bool isSuppressed = false;
    size_t width = SIZE_MAX;
    Size size = Size::Long;
    char16_t conversion = 0;
};

enum class Outcome { Matched, Mismatched, AtEnd };

class Scanner {
public:
    Scanner(const WCHAR* text, const WCHAR* format, va_list arguments) : text_(text), format_(format) {
        va_copy(arguments_, arguments);
    }
    Scanner(const Scanner&) = delete;
    Scanner& operator=(const Scanner&) = delete;
    ~Scanner() { va_end(arguments_); }

    int Scan();

private:
    Outcome ScanLiteral(char16_t unit);
    Field ParseField();
    bool Takes(std::u16string_view prefix);
    Outcome ScanField(const Field& field);
    Outcome ScanInteger(const Field& field);
    Outcome ScanWord(const Field& field);
    int ScanBase(char16_t conversion, size_t& width, bool& hasDigits);
    void Store(const Field& field, uint64_t value);
    void SkipSpaces() {
        while (IsSpace(*text_))
            ++text_;
    }

    const WCHAR* text_;
    const WCHAR* format_;
    va_list arguments_;
    int assigned_ = 0;
};

int Scanner::Scan() {
    while (*format_ != 0) {
        Outcome outcome = Outcome::Matched;
        if (IsSpace(*format_)) {
            ++format_;
            SkipSpaces();
        } else if (*format_ != u'%') {
            outcome = ScanLiteral(*format_++);
        } else {
            ++format_;
            outcome = ScanField(ParseField());
        }
        if (outcome == Outcome::AtEnd && assigned_ == 0) return EOF;
        if (outcome != Outcome::Matched) break;
    }
    return assigned_;
}

Outcome Scanner::ScanLiteral(char16_t unit) {
    if (*text_ == 0) return Outcome::AtEnd;
    if (*text_ != unit) return Outcome::Mismatched;
    ++text_;
    return Outcome::Matched;
}

bool Scanner::Takes(std::u16string_view prefix) {
    for (size_t i = 0; i < prefix.size(); ++i) {
        if (format_[i] != prefix[i]) return false;
    }
    format_ += prefix.size();
    return true;
}

Field Scanner::ParseField() {
    Field field;
    field.isSuppressed = Takes(u"*");
    if (DigitValue(*format_) < 10) {
        for (field.width = 0; DigitValue(*format_) < 10; ++format_) {
            field.width = field.width * 10 + static_cast<size_t>(DigitValue(*format_));
        }
    }
    if (Takes(u"I64") || Takes(u"ll")) {
        field.size = Size::SixtyFour;
    } else if (Takes(u"h")) {
        field.size = Size::Short;
    } else if (!Takes(u"I32")) {
        Takes(u"l");
    }
    field.conversion = *format_;
    if (*format_ != 0) ++format_;
    return field;
}

Outcome Scanner::ScanField(const Field& field) {
    switch (field.conversion) {
        case u'd':
        case u'i':
        case u'u':
        case u'o':
        case u'x':
        case u'X':
            return ScanInteger(field);
        case u's':
            return ScanWord(field);
        case u'%':
            return ScanLiteral(u'%');
        default:
            simulator::Violate("a scan format holds %" + simulator::ToUtf8({&field.conversion, 1}) +
                               ", which is not simulated");
            return Outcome::Mismatched;
    }
}

/* The base of the number that begins here; its prefix is skipped. */
int Scanner::ScanBase(char16_t conversion, size_t& width, bool& hasDigits) {
    int base = conversion == u'o' ? 8 : conversion == u'x' || conversion == u'X' ? 16 : 10;
    const bool findsBase = conversion == u'i';
    if (width == 0 || *text_ != u'0' || !(findsBase || base == 16)) return base;
    const bool isHexadecimal = width > 1 && (text_[1] == u'x' || text_[1] == u'X');
    if (isHexadecimal) {
        text_ += 2;
        width -= 2;
        return 16;
    }
    ++text_;
    --width;
    hasDigits = true;
    return findsBase ? 8 : base;
}

Outcome Scanner::ScanInteger(const Field& field) {
    SkipSpaces();
    if (*text_ == 0) return Outcome::AtEnd;
    size_t width = field.width;
    bool isNegative = false;
    if (width != 0 && (*text_ == u'-' || *text_ == u'+')) {
        isNegative = *text_ == u'-';
        ++text_;
        --width;
    }
    bool hasDigits = false;
    const int base = ScanBase(field.conversion, width, hasDigits);
    uint64_t value = 0;
    for (; width != 0 && DigitValue(*text_) < base; ++text_, --width) {
        value = value * static_cast<uint64_t>(base) + static_cast<uint64_t>(DigitValue(*text_));
        hasDigits = true;
    }
    if (!hasDigits) return Outcome::Mismatched;
    if (!field.isSuppressed) Store(field, isNegative ? 0 - value : value);
    return Outcome::Matched;
}

void Scanner::Store(const Field& field, uint64_t value) {
    if (field.size == Size::SixtyFour) {
        *va_arg(arguments_, int64_t*) = static_cast<int64_t>(value);
    } else if (field.size == Size::Short) {
        *va_arg(arguments_, int16_t*) = static_cast<int16_t>(value);
    } else {
        *va_arg(arguments_, int32_t*) = static_cast<int32_t>(value);
    }
    ++assigned_;
}

Outcome Scanner::ScanWord(const Field& field) {
    SkipSpaces();
    if (*text_ == 0) return Outcome::AtEnd;
    WCHAR* word = field.isSuppressed ? nullptr : va_arg(arguments_, WCHAR*);
    for (size_t width = field.width; width != 0 && *text_ != 0 && !IsSpace(*text_); --width) {
        if (word != nullptr) *word++ = *text_;
        ++text_;
    }
    if (word == nullptr) return Outcome::Matched;
    *word = 0;
    ++assigned_;
    return Outcome::Matched;
}

}  // namespace

int swscanf(const WCHAR* text, const WCHAR* format, ...) {
    const simulator::OwnWork ownWork;
    va_list arguments;
    va_start(arguments, format);
    const int assigned = Scanner(text, format, arguments).Scan();
    va_end(arguments);
    return assigned;
}
